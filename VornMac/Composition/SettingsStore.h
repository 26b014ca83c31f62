#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace vorn {

/// Stores settings. Reads them anew each time: another process may have changed them. Threads: one.
class SettingsStore {
public:
    using Value = std::variant<bool, std::string>;

    virtual ~SettingsStore() = default;

    /// Returns the value of `key`; absent if it is missing, or is neither a text nor a boolean. On macOS, a number
    /// counts as a boolean.
    virtual std::optional<Value> find(const std::string& key) const = 0;

    /// Keeps `value` for later runs. Returns why that failed; absent on success.
    virtual std::optional<std::string> keep(const std::string& key, const Value& value) = 0;
};

/// The user's own settings of the application `identifier`: macOS keeps them in the preferences of that domain, other
/// systems in the private file `<identifier>/defaults.ini` in the user's configuration folder.
std::unique_ptr<SettingsStore> userSettings(const std::string& identifier);

} // namespace vorn
