#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <QSettings>

namespace vorn {

/// The settings of the application `identifier`, as they are now: macOS keeps them in the preferences of that domain,
/// other systems in a private file `<identifier>/defaults.ini` of the user's configuration folder.
std::unique_ptr<QSettings> openSettings(const std::string& identifier);

/// The settings in `file` alone, on every system. The file is made when it is missing, and so is the folder it lies in;
/// what is made is private.
std::unique_ptr<QSettings> openSettingsFile(const std::filesystem::path& file);

} // namespace vorn
