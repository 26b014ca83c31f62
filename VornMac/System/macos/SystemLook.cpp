#include "VornMac/System/SystemLook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>

namespace vorn {
namespace {

/// The path of `path` relative to the executable's folder.
QString beside(const QString& path)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../") + path);
}

bool isBundle(const QString& folder)
{
    return folder.endsWith(QStringLiteral(".app"));
}

} // namespace

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
    const QString bundle = beside(QStringLiteral(".."));
    return isBundle(bundle) ? bundle : QCoreApplication::applicationFilePath();
}

// Without a bundle, the build folder's.
QString noticesFile()
{
    const bool isInBundle = isBundle(beside(QStringLiteral("..")));
    return beside(isInBundle ? QStringLiteral("Resources/THIRD_PARTY_NOTICES.txt")
                             : QStringLiteral("share/vorn/THIRD_PARTY_NOTICES.txt"));
}

} // namespace vorn
