#include "Platform/HTTP/OpenSockets.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorn {
namespace {

/// One end of a connection. IPv4 addresses are kept as IPv4-mapped IPv6 ones, so that both forms compare equal.
struct End {
    in6_addr address{};
    int port = -1;

    bool operator==(const End& other) const noexcept
    {
        return port == other.port && std::memcmp(&address, &other.address, sizeof address) == 0;
    }
};

in6_addr mapped(const in_addr& v4) noexcept
{
    in6_addr result{};
    result.s6_addr[10] = result.s6_addr[11] = 0xFF;
    std::memcpy(&result.s6_addr[12], &v4, sizeof v4);
    return result;
}

End endOf(const sockaddr_storage& address) noexcept
{
    if (address.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(address);
        return {.address = mapped(v4.sin_addr), .port = ntohs(v4.sin_port)};
    }
    if (address.ss_family == AF_INET6) {
        const auto& v6 = reinterpret_cast<const sockaddr_in6&>(address);
        return {.address = v6.sin6_addr, .port = ntohs(v6.sin6_port)};
    }
    return {};
}

/// Port -1 if `text` is not an address.
End endOf(const char* text, int port) noexcept
{
    in_addr v4{};
    if (inet_pton(AF_INET, text, &v4) == 1) return {.address = mapped(v4), .port = port};
    End result{.port = port};
    return inet_pton(AF_INET6, text, &result.address) == 1 ? result : End{};
}

int localPortOf(int socket) noexcept
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return -1;
    return endOf(address).port;
}

End peerOf(int socket) noexcept
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getpeername(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return {};
    return endOf(address);
}

} // namespace

int OpenSockets::open(int family, int type, int protocol)
{
    const int result = socket(family, type, protocol);
    if (result < 0) return result;
    fcntl(result, F_SETFD, FD_CLOEXEC); // child processes must not keep connections open
    sockets_.push_back({.number = result, .relay = nullptr});
    return result;
}

int OpenSockets::close(int socket)
{
    // Drops libcurl's TLS close_notify: sending it could raise SIGPIPE on the thread that ends the session.
    std::erase_if(sockets_, [socket](const OpenSocket& open) { return open.number == socket; });
    return ::close(socket);
}

int OpenSockets::find(int localPort, const char* peer, int peerPort) const noexcept
{
    const End wanted = endOf(peer, peerPort);
    if (wanted.port < 0) return -1;
    const auto found = std::find_if(sockets_.begin(), sockets_.end(), [&](const OpenSocket& open) {
        return localPortOf(open.connection()) == localPort && peerOf(open.connection()) == wanted;
    });
    return found == sockets_.end() ? -1 : found->connection();
}

void OpenSockets::putRelayBefore(int socket) noexcept
{
    const auto found = std::find_if(sockets_.begin(), sockets_.end(),
                                    [socket](const OpenSocket& open) { return open.connection() == socket; });
    if (found == sockets_.end() || found->relay) return;
    try {
        found->relay = std::make_unique<SocketRelay>(socket);
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): no descriptors or memory left
    }
}

void OpenSockets::moveRelays() noexcept
{
    for (const OpenSocket& open : sockets_) {
        if (open.relay) open.relay->move();
    }
}

std::vector<curl_waitfd>& OpenSockets::awaitedByRelays()
{
    awaited_.clear();
    for (const OpenSocket& open : sockets_) {
        if (open.relay) open.relay->watch(awaited_);
    }
    return awaited_;
}

void resetOnClose(int socket) noexcept
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

} // namespace vorn
