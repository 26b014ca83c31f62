#pragma once

#include <optional>
#include <string>

namespace vorn {

/// Small settings of the current user, by key. Threads: the one that constructed it.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The text of `key`; nothing when it is missing or is not text.
    virtual std::optional<std::string> text(const std::string& key) const = 0;

    /// False when `key` is missing. Reads text as macOS does: "YES", "true" and numbers other than 0 are true.
    virtual bool boolean(const std::string& key) const = 0;

    /// Saves the value for later runs. If that fails, the value still applies to this run, and the failure is logged.
    virtual void setBoolean(const std::string& key, bool value) = 0;
    virtual void setText(const std::string& key, const std::string& value) = 0; ///< the same
};

} // namespace vorn
