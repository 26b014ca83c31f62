#pragma once

#include "VornMac/View/ScreenModel.h"
#include "tests/VornMac/Model/ModelFixture.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vorn::testing {

/// A model in virtual time, and what the screens see of it.
class ScreenFixture {
public:
    using Counts = std::map<std::string, int>; ///< by the signal's name

    ~ScreenFixture();

    ModelFixture fix;

    /// Shows the model, which has been launched.
    ScreenModel& show();
    ScreenModel& screen() { return *screen_; }

    // As QML reads them, by name: an enumerator by its own name, a condition as "true" or "false".
    std::string value(const char* property) const;
    std::map<std::string, std::string> values() const;

    /// How often each signal was sent since this was last asked; those that were not are left out.
    Counts told();

private:
    std::unique_ptr<ScreenModel> screen_;
    Counts told_;
};

/// What can change, as QML reads it.
std::map<std::string, std::string> valuesOf(const ScreenModel& screen);
/// The properties that `signal` tells about.
std::vector<std::string> propertiesOf(const std::string& signal);

/// The quest whose last upload was paid, for `until`.
std::string paidQuestJSON(const std::string& until);

} // namespace vorn::testing
