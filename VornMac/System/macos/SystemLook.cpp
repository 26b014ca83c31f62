#include "VornMac/System/SystemLook.h"

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

} // namespace vorn
