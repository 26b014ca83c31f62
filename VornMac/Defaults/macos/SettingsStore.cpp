#include "VornMac/Defaults/SettingsStore.h"

#include <algorithm>

#include <QStringList>

namespace vorn {
namespace {

/// "com.vorn.mac" is the organization "vorn.com" and the application "mac": QSettings turns the first around again.
QString organizationOf(const QString& identifier)
{
    QStringList parts = identifier.split(QLatin1Char('.'));
    parts.removeLast();
    std::reverse(parts.begin(), parts.end());
    return parts.join(QLatin1Char('.'));
}

} // namespace

std::unique_ptr<QSettings> openSettings(const std::string& identifier)
{
    const QString domain = QString::fromStdString(identifier);
    auto settings = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, organizationOf(domain),
                                                domain.section(QLatin1Char('.'), -1));
    settings->setFallbacksEnabled(false);
    return settings;
}

} // namespace vorn
