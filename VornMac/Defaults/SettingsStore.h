#pragma once

#include <memory>
#include <string>

#include <QSettings>

namespace vorn {

/// The settings of the application `identifier`, as they are now: macOS keeps them in the preferences of that domain,
/// other systems in a private file `<identifier>/defaults.ini` of the user's configuration folder.
std::unique_ptr<QSettings> openSettings(const std::string& identifier);

} // namespace vorn
