#include "VornMac/System/ThisApplication.h"

#include "VornMac/System/SystemLook.h"

namespace vorn {

QUrl ThisApplication::file()
{
    return QUrl::fromLocalFile(applicationFile());
}

} // namespace vorn
