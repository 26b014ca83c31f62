#include "Platform/HTTP/SocketTraffic.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace vorn {

SocketTraffic trafficOf(int socket) noexcept
{
    tcp_connection_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_CONNECTION_INFO, &info, &size) != 0) return {};
    // What was sent for the first time, less what still waits in the buffer. The buffer holds bytes until they are
    // confirmed, sent ones too, so the difference is no exact count; it changes whenever something moves.
    return {.received = info.tcpi_rxbytes, .acknowledged = info.tcpi_txbytes - info.tcpi_snd_sbbytes};
}

} // namespace vorn
