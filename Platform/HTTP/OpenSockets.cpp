#include "Platform/HTTP/OpenSockets.h"

#include <algorithm>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorn {
namespace {

int localPortOf(int socket) noexcept
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) return -1;
    if (address.ss_family == AF_INET) return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
    if (address.ss_family == AF_INET6) return ntohs(reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port);
    return -1;
}

} // namespace

int OpenSockets::open(int family, int type, int protocol)
{
    const int result = socket(family, type, protocol);
    if (result < 0) return result;
    fcntl(result, F_SETFD, FD_CLOEXEC); // programs that are started must not hold our connections open
    sockets_.push_back(result);
    return result;
}

int OpenSockets::close(int socket)
{
    std::erase(sockets_, socket);
    return ::close(socket);
}

int OpenSockets::find(int localPort) const noexcept
{
    const auto found = std::find_if(sockets_.begin(), sockets_.end(),
                                    [localPort](int socket) { return localPortOf(socket) == localPort; });
    return found == sockets_.end() ? -1 : *found;
}

void resetOnClose(int socket) noexcept
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

} // namespace vorn
