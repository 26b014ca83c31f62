#pragma once

#include "Platform/Base/Log.h"
#include "Platform/Base/UserDefaults.h"

#include <map>
#include <variant>

namespace vorn {

/// The user's own settings of an application, kept by the system. Read anew each time: another process may have changed
/// them. A failure to keep one is logged; what was set then counts while this object lives.
class SettingsDefaults final : public UserDefaults {
public:
    /// `identifier` is the application's bundle identifier, whose preferences macOS keeps.
    SettingsDefaults(std::string identifier, Log log);

    std::optional<std::string> text(const std::string& key) const override;
    bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setText(const std::string& key, const std::string& value) override;

private:
    using Value = std::variant<bool, std::string>;

    void keep(const std::string& key, Value value);

    std::string identifier_;
    Log log_;
    std::map<std::string, Value> unsaved_;
};

} // namespace vorn
