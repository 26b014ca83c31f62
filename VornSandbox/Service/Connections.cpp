#include "VornSandbox/Service/Connections.h"

#include "Platform/Base/FileDescriptor.h"

#include <charconv>
#include <filesystem>
#include <functional>
#include <string>

#include <arpa/inet.h>
#include <fcntl.h>
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

/// Looks at each connection of the server at `localPort`, until `visit` gives true. The descriptor is one of our own:
/// the server may close its own at any time, and what comes next may get its number.
void visitConnections(int localPort, const std::function<bool(int descriptor, int remotePort)>& visit)
{
    bool done = false;
    forEachDescriptor([&](int number) {
        if (done || localPortOf(number) != localPort) return;
        const FileDescriptor held(fcntl(number, F_DUPFD_CLOEXEC, 0));
        const int remotePort = remotePortOf(held.get());
        if (localPortOf(held.get()) == localPort && remotePort > 0) done = visit(held.get(), remotePort);
    });
}

bool isClosed(int connection)
{
    pollfd question{.fd = connection, .events = POLLIN, .revents = 0};
    if (poll(&question, 1, 0) <= 0) return false;
    if ((question.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) return true;
    char byte = 0;
    return recv(connection, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

} // namespace

std::vector<int> Connections::remotePorts() const
{
    std::vector<int> ports;
    visitConnections(localPort_, [&](int, int port) {
        ports.push_back(port);
        return false;
    });
    return ports;
}

void Connections::cut(int remotePort) const
{
    visitConnections(localPort_, [&](int connection, int port) {
        return port == remotePort && shutdown(connection, SHUT_RDWR) == 0;
    });
}

void Connections::cutAll() const
{
    visitConnections(localPort_, [](int connection, int) {
        shutdown(connection, SHUT_RDWR);
        return false;
    });
}

bool Connections::isClosedByClient(int remotePort) const
{
    bool closed = true; // what is not there has gone
    visitConnections(localPort_, [&](int connection, int port) {
        if (port == remotePort) closed = isClosed(connection);
        return port == remotePort;
    });
    return closed;
}

} // namespace vorn::sandbox
