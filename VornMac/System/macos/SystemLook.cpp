#include "VornMac/System/SystemLook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>

namespace vorn {

// macOS has no system-wide text size.
double systemTextScale()
{
    return 1;
}

QString systemFontFamily()
{
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

// Vorn.app/Contents/MacOS/Vorn; without a bundle, the executable.
QString applicationFile()
{
    const QString bundle = QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../.."));
    return bundle.endsWith(QStringLiteral(".app")) ? bundle : QCoreApplication::applicationFilePath();
}

} // namespace vorn
