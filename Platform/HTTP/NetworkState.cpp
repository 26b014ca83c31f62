#include "Platform/HTTP/NetworkState.h"

#include "Platform/Base/Owned.h"

#include <cstring>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace vorn {
namespace {

/// Interfaces assign themselves addresses in 169.254.0.0/16 and fe80::/10 without any network.
bool reachesBeyondLink(const sockaddr& address) noexcept
{
    if (address.sa_family == AF_INET) {
        sockaddr_in v4{};
        std::memcpy(&v4, &address, sizeof v4);
        return (ntohl(v4.sin_addr.s_addr) >> 16U) != 0xA9FEU;
    }
    if (address.sa_family == AF_INET6) {
        sockaddr_in6 v6{};
        std::memcpy(&v6, &address, sizeof v6);
        return v6.sin6_addr.s6_addr[0] != 0xFE || (v6.sin6_addr.s6_addr[1] & 0xC0U) != 0x80;
    }
    return false;
}

bool isUsable(const ifaddrs& entry) noexcept
{
    constexpr unsigned working = IFF_UP | IFF_RUNNING;
    return (entry.ifa_flags & working) == working && (entry.ifa_flags & IFF_LOOPBACK) == 0U &&
           entry.ifa_addr != nullptr && reachesBeyondLink(*entry.ifa_addr);
}

} // namespace

bool isOnNetwork() noexcept
{
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return true; // unknown: assume the common case
    const Owned<ifaddrs, freeifaddrs> list(first);
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
        if (isUsable(*entry)) return true;
    }
    return false;
}

} // namespace vorn
