#include "Platform/Base/SystemFacts.h"

#include <array>

#include <sys/sysctl.h>

namespace vorn {

SystemVersion systemVersion()
{
    std::array<char, 64> text{};
    std::size_t size = text.size() - 1; // the last byte stays NUL
    return sysctlbyname("kern.osproductversion", text.data(), &size, nullptr, 0) == 0 ? parseSystemVersion(text.data())
                                                                                      : SystemVersion{};
}

} // namespace vorn
