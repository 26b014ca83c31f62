#include "Platform/HTTP/SocketTraffic.h"

#include <linux/tcp.h> // not <netinet/tcp.h>, whose tcp_info ends before the counters
#include <netinet/in.h>
#include <sys/socket.h>

namespace vorn {

SocketTraffic trafficOf(int socket) noexcept
{
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return {};
    return {.received = info.tcpi_bytes_received, .acknowledged = info.tcpi_bytes_acked};
}

} // namespace vorn
