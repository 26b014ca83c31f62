#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/macos/CFObject.h"

#include <SystemConfiguration/SystemConfiguration.h>

namespace vorn {

std::string computerName()
{
    const CFOwned<CFStringRef> name(SCDynamicStoreCopyComputerName(nullptr, nullptr));
    return name ? utf8(name.get()).value_or("") : "";
}

} // namespace vorn
