#include "Platform/HTTP/RequestConnection.h"

#include "Platform/HTTP/OpenSockets.h"

#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace vorn {
namespace {

FileDescriptor duplicateOf(int socket) noexcept
{
    return FileDescriptor(fcntl(socket, F_DUPFD_CLOEXEC, 0));
}

} // namespace

bool RequestConnection::mayGoOut() noexcept
{
    if (begun_) triedAgain_ = true;
    return !begun_;
}

curl_socket_t RequestConnection::open(const curl_sockaddr& address) noexcept
{
    if (!mayGoOut()) return CURL_SOCKET_BAD;
    const int result = sockets_->open(address.family, address.socktype, address.protocol);
    if (result >= 0) socket_ = duplicateOf(result);
    return result;
}

bool RequestConnection::begin(int localPort, const char* peer, int peerPort, bool relayed) noexcept
{
    if (!mayGoOut()) return false;
    begun_ = true;
    const int connection = sockets_->find(localPort, peer, peerPort);
    socket_ = duplicateOf(connection);
    if (relayed) sockets_->putRelayBefore(connection);
    return true;
}

bool RequestConnection::hasNewInput() noexcept
{
    int count = 0;
    if (ioctl(socket_.get(), FIONREAD, &count) != 0) count = 0;
    const int before = std::exchange(waiting_, count);
    return count > 0 && count != before;
}

std::string RequestConnection::readRest() const
{
    std::string bytes(64 * 1024, '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const auto count = recv(socket_.get(), bytes.data() + size, bytes.size() - size, MSG_DONTWAIT);
        if (count <= 0) break;
        size += static_cast<std::size_t>(count);
    }
    bytes.resize(size);
    return bytes;
}

void RequestConnection::resetOnClose() const noexcept
{
    if (socket_) vorn::resetOnClose(socket_.get());
}

} // namespace vorn
