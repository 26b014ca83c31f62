#pragma once

#include "tests/VornMac/Model/ModelState.h"

#include <map>
#include <string>
#include <vector>

namespace vorn::testing {

/// Holds a model to its word about signals: each one that comes without a change, and each change that comes without
/// one, is a problem.
class ModelWatch : public QObject {
public:
    explicit ModelWatch(const AppModel& model);

    /// Looks for changes of which no signal has told, and returns all problems so far.
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
