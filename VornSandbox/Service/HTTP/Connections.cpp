#include "VornSandbox/Service/HTTP/Connections.h"

#include <charconv>
#include <filesystem>
#include <functional>
#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace vorn::sandbox {
namespace {

int portOf(int descriptor, int (*ask)(int, sockaddr*, socklen_t*))
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (ask(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0 || address.sin_family != AF_INET)
        return -1;
    return ntohs(address.sin_port);
}

int localPortOf(int descriptor)
{
    return portOf(descriptor, [](int number, sockaddr* to, socklen_t* size) { return getsockname(number, to, size); });
}

int remotePortOf(int descriptor)
{
    return portOf(descriptor, [](int number, sockaddr* to, socklen_t* size) { return getpeername(number, to, size); });
}

void forEachDescriptor(const std::function<void(int)>& visit)
{
    std::error_code ignored; // descriptors come and go while we look
    for (std::filesystem::directory_iterator entry("/dev/fd", ignored), end; entry != end; entry.increment(ignored)) {
        const std::string name = entry->path().filename().string();
        int number = -1;
        std::from_chars(name.data(), name.data() + name.size(), number);
        if (number >= 0) visit(number);
    }
}

} // namespace

int Connections::find(int remotePort) const
{
    int found = -1;
    forEachDescriptor([&](int number) {
        if (found < 0 && localPortOf(number) == localPort_ && remotePortOf(number) == remotePort) found = number;
    });
    return found;
}

void Connections::cut(int remotePort) const
{
    const int number = find(remotePort);
    if (number >= 0) shutdown(number, SHUT_RDWR);
}

void Connections::cutAll() const
{
    forEachDescriptor([&](int number) {
        if (localPortOf(number) == localPort_ && remotePortOf(number) > 0) shutdown(number, SHUT_RDWR);
    });
}

bool Connections::isClosedByClient(int remotePort) const
{
    const int number = find(remotePort);
    if (number < 0) return true;
    pollfd question{.fd = number, .events = POLLIN, .revents = 0};
    if (poll(&question, 1, 0) <= 0) return false;
    if ((question.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) return true;
    char byte = 0;
    return recv(number, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

} // namespace vorn::sandbox
