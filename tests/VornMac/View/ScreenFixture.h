#pragma once

#include "VornMac/View/ScreenModel.h"
#include "tests/VornMac/Model/ModelFixture.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vorn::testing {

/// A model in virtual time with its `ScreenModel`.
class ScreenFixture {
public:
    using Counts = std::map<std::string, int>; ///< by the signal's name

    ~ScreenFixture();

    ModelFixture fix;

    /// Shows the model, which must have been launched.
    ScreenModel& show();
    ScreenModel& screen() { return *screen_; }

    // As QML reads it, by name: an enumerator by its own name, a boolean as "true" or "false".
    std::string value(const char* property) const;
    std::map<std::string, std::string> values() const;

    /// How often each signal was sent since the last call; signals that were not sent are missing.
    Counts told();

private:
    std::unique_ptr<ScreenModel> screen_;
    Counts told_;
};

/// All properties that can change, as QML reads them.
std::map<std::string, std::string> valuesOf(const ScreenModel& screen);
/// The properties that `signal` announces.
std::vector<std::string> propertiesOf(const std::string& signal);

/// A quest whose last upload was paid, with a cooldown that ends at `until`.
std::string paidQuestJSON(const std::string& until);

} // namespace vorn::testing
