#include "VornMac/System/SystemLook.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>

namespace vorn {
namespace {

/// `path`, relative to the parent of the executable's folder, as an absolute path.
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

// The bundle, for an executable at Vorn.app/Contents/MacOS/Vorn; without one, the executable.
QString applicationFile()
{
    const QString bundle = beside(QStringLiteral(".."));
    return isBundle(bundle) ? bundle : QCoreApplication::applicationFilePath();
}

// Without a bundle, the file is the one in the build folder.
QString noticesFile()
{
    const bool isInBundle = isBundle(beside(QStringLiteral("..")));
    return beside(isInBundle ? QStringLiteral("Resources/THIRD_PARTY_NOTICES.txt")
                             : QStringLiteral("share/vorn/THIRD_PARTY_NOTICES.txt"));
}

} // namespace vorn
