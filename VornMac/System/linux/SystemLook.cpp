#include "VornMac/System/SystemLook.h"

#include <QGuiApplication>
#include <QScreen>

namespace vorn {

// Desktops tell the size that users want their text to have as a resolution.
double systemTextScale()
{
    constexpr double usualResolution = 96;
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->logicalDotsPerInch() / usualResolution : 1;
}

// Desktops differ in theirs, and the design needs one whose widths it knows. It is among the packages we install.
QString systemFontFamily()
{
    return QStringLiteral("Inter");
}

} // namespace vorn
