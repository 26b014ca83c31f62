#include "VornMac/System/SystemLook.h"

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

// Desktops differ in their font, and the layout needs known widths. This one is among the packages we install.
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

} // namespace vorn
