#pragma once

#include "Platform/Base/Log.h"
#include "Platform/Base/UserDefaults.h"
#include "VornMac/Composition/SettingsStore.h"

#include <filesystem>
#include <map>
#include <memory>

namespace vorn {

/// The user's settings of an application, kept by the system. Reads them anew each time: another process may have
/// changed them. A failure to save is logged, and the unsaved value counts while this object lives.
class SettingsDefaults final : public UserDefaults {
public:
    /// `identifier` is the application's bundle identifier, under which macOS keeps the preferences.
    SettingsDefaults(const std::string& identifier, Log log);
    /// Uses the settings in `file` instead of the system's.
    SettingsDefaults(std::filesystem::path file, Log log);

    /// The settings for one run: those in the file named by "-VornSettingsFile FILE" on the command line, else the
    /// user's own settings of the application `identifier`.
    static SettingsDefaults forRun(const std::map<std::string, std::string>& line, const std::string& identifier,
                                   Log log);

    std::optional<std::string> text(const std::string& key) const override;
    bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setText(const std::string& key, const std::string& value) override;

private:
    using Value = SettingsStore::Value;

    std::optional<Value> find(const std::string& key) const;
    void keep(const std::string& key, Value value);

    std::unique_ptr<SettingsStore> store_;
    Log log_;
    std::map<std::string, Value> unsaved_;
};

} // namespace vorn
