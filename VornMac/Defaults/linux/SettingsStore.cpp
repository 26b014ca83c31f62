#include "VornMac/Defaults/SettingsStore.h"

#include <QStandardPaths>

namespace vorn {

std::unique_ptr<QSettings> openSettings(const std::string& identifier)
{
    const std::filesystem::path configuration =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString();
    return openSettingsFile(configuration / identifier / "defaults.ini");
}

} // namespace vorn
