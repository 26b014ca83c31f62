#include "Platform/HTTP/SocketRelay.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorn {
namespace {

void require(bool done, const char* what)
{
    if (!done) throw std::system_error(errno, std::generic_category(), what);
}

bool mayGoOn() noexcept
{
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

/// Makes `socket` non-blocking and close-on-exec, like libcurl's own.
void prepare(int socket)
{
    require(fcntl(socket, F_SETFD, FD_CLOEXEC) == 0, "fcntl");
    require(fcntl(socket, F_SETFL, O_NONBLOCK) == 0, "fcntl");
    const int size = 256 * 1024; // macOS has 8 KiB by default; a smaller buffer costs only time
    setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
}

} // namespace

bool SocketRelay::Stream::takeFrom(int socket) noexcept
{
    if (ended_ || broken_ || !isEmpty()) return false;
    const auto count = recv(socket, bytes_.data(), bytes_.size(), MSG_DONTWAIT);
    begin_ = 0;
    end_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    broken_ = count < 0 && !mayGoOn();
    ended_ = broken_ || count == 0;
    return count > 0;
}

bool SocketRelay::Stream::giveTo(int socket) noexcept
{
    if (broken_ || isEmpty()) return false;
    const auto count = send(socket, bytes_.data() + begin_, end_ - begin_, MSG_DONTWAIT);
    if (count > 0) begin_ += static_cast<std::size_t>(count);
    broken_ = count < 0 && !mayGoOn();
    return count > 0;
}

short SocketRelay::Stream::awaitedFrom() const noexcept
{
    return ended_ || broken_ || !isEmpty() ? 0 : CURL_WAIT_POLLIN;
}

short SocketRelay::Stream::awaitedTo() const noexcept
{
    return broken_ || isEmpty() ? 0 : CURL_WAIT_POLLOUT;
}

SocketRelay::SocketRelay(int socket) : far_(socket), connection_(fcntl(socket, F_DUPFD_CLOEXEC, 0))
{
    require(static_cast<bool>(connection_), "fcntl");
    std::array<int, 2> ends{};
    require(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0, "socketpair");
    near_ = FileDescriptor(ends[0]);
    const FileDescriptor far(ends[1]);
    prepare(near_.get());
    prepare(far.get());
    require(dup2(far.get(), socket) == socket, "dup2");
    fcntl(socket, F_SETFD, FD_CLOEXEC);
}

void SocketRelay::move() noexcept
{
    bool moved = static_cast<bool>(near_);
    while (moved) {
        moved = in_.takeFrom(connection_.get());
        moved = in_.giveTo(near_.get()) || moved;
        moved = out_.takeFrom(near_.get()) || moved;
        moved = out_.giveTo(connection_.get()) || moved;
    }
    if (near_ && in_.hasEnded() && in_.isEmpty()) passOnTheEnd();
}

/// Called after the last byte. A server may stop sending and still read. When the connection is cut, libcurl's writes
/// must fail too, but only after it has read everything: it reads nothing after a failed write.
void SocketRelay::passOnTheEnd() noexcept
{
    shutdown(near_.get(), SHUT_WR);
    int unread = 0;
    if (!in_.isBroken() && !out_.isBroken()) return;
    if (ioctl(far_, FIONREAD, &unread) != 0 || unread == 0) near_.reset();
}

void SocketRelay::watch(std::vector<curl_waitfd>& watched) const
{
    if (!near_) return;
    // No entry without events: poll reports a cut connection at once, every time.
    const auto add = [&watched](int socket, int events) {
        if (events != 0) watched.push_back({.fd = socket, .events = static_cast<short>(events), .revents = 0});
    };
    add(connection_.get(), in_.awaitedFrom() | out_.awaitedTo());
    add(near_.get(), out_.awaitedFrom() | in_.awaitedTo());
}

} // namespace vorn
