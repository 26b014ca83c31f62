#include "VornMac/System/SystemLook.h"

#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QStandardPaths>

namespace vorn {

// Desktops express the wanted text size as a resolution.
double systemTextScale()
{
    constexpr double usualResolution = 96;
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->logicalDotsPerInch() / usualResolution : 1;
}

// Desktops use different fonts, but the layout needs known widths. The package depends on this font.
QString systemFontFamily()
{
    return QStringLiteral("Inter");
}

QString applicationFile()
{
    const QString entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                                                 QGuiApplication::desktopFileName() + QStringLiteral(".desktop"));
    return entry.isEmpty() ? QCoreApplication::applicationFilePath() : entry;
}

// Not in the documentation folder: packages may be installed without it.
QString noticesFile()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/vorn/THIRD_PARTY_NOTICES.txt"));
}

} // namespace vorn
