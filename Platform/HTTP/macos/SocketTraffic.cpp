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
    // Bytes sent, without retransmissions, minus bytes buffered. The buffer keeps sent bytes until they are
    // acknowledged, so this is not an exact count, but it changes whenever something moves.
    return {.received = info.tcpi_rxbytes, .acknowledged = info.tcpi_txbytes - info.tcpi_snd_sbbytes};
}

} // namespace vorn
