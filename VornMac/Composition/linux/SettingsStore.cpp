#include "VornMac/Composition/SettingsStore.h"

#include "VornMac/Composition/SettingsFile.h"

#include <QStandardPaths>

namespace vorn {

std::unique_ptr<SettingsStore> userSettings(const std::string& identifier)
{
    const std::filesystem::path configuration =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString();
    return std::make_unique<SettingsFile>(configuration / identifier / "defaults.ini");
}

} // namespace vorn
