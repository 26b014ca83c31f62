#pragma once

#include "tests/VornMac/Model/ModelState.h"

#include <map>
#include <string>
#include <vector>

namespace vorn::testing {

/// Checks a model's signals: a signal without a change, and a change without a signal, is a problem.
class ModelWatch : public QObject {
public:
    explicit ModelWatch(const AppModel& model);

    /// Looks for changes without a signal, and returns all problems so far.
    std::vector<std::string> problems();
    /// The session's generation when `property` was last written.
    std::int64_t generationOf(const std::string& property) const;

private:
    template <class Value>
    void watch(void (AppModel::*signal)(), Value ModelState::* property, const std::string& name);

    const AppModel& model_;
    ModelState told_;
    std::map<std::string, std::int64_t> generations_;
    std::vector<std::string> problems_;
};

} // namespace vorn::testing
