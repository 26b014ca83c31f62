#include "Platform/Base/SystemFacts.h"

#include <sys/utsname.h>

namespace vorn {

SystemVersion systemVersion()
{
    utsname names{};
    return uname(&names) == 0 ? parseSystemVersion(names.release) : SystemVersion{};
}

} // namespace vorn
