#include "VornMac/Application/LocalSocket.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace vorn {
namespace {

[[noreturn]] void fail(const char* what, int code)
{
    throw std::system_error(code, std::generic_category(), what);
}

sockaddr_un addressOf(const std::filesystem::path& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& text = path.native();
    if (text.size() >= sizeof(address.sun_path)) fail("the path of the socket is too long", ENAMETOOLONG);
    std::ranges::copy(text, std::begin(address.sun_path));
    return address;
}

FileDescriptor prepared(int number) noexcept
{
    FileDescriptor file(number);
    if (file && (fcntl(number, F_SETFD, FD_CLOEXEC) != 0 || fcntl(number, F_SETFL, O_NONBLOCK) != 0)) file.reset();
    return file;
}

FileDescriptor newSocket()
{
    FileDescriptor made = prepared(socket(AF_UNIX, SOCK_STREAM, 0));
    if (!made) fail("cannot make a socket", errno);
    return made;
}

const sockaddr* plain(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

} // namespace

FileDescriptor listenAt(const std::filesystem::path& path)
{
    constexpr int mostWaiting = 8;
    const sockaddr_un address = addressOf(path);
    FileDescriptor listener = newSocket();
    unlink(path.c_str());
    if (bind(listener.get(), plain(address), sizeof(address)) != 0 || listen(listener.get(), mostWaiting) != 0)
        fail("cannot listen", errno);
    return listener;
}

FileDescriptor acceptFrom(const FileDescriptor& listener) noexcept
{
    return prepared(accept(listener.get(), nullptr, nullptr));
}

FileDescriptor connectTo(const std::filesystem::path& path)
{
    const sockaddr_un address = addressOf(path);
    FileDescriptor connection = newSocket();
    return connect(connection.get(), plain(address), sizeof(address)) == 0 ? std::move(connection) : FileDescriptor(-1);
}

bool waitToRead(const FileDescriptor& file, std::chrono::steady_clock::time_point end) noexcept
{
    using std::chrono::milliseconds;
    pollfd wanted{.fd = file.get(), .events = POLLIN, .revents = 0};
    while (true) {
        const auto left = std::chrono::ceil<milliseconds>(end - std::chrono::steady_clock::now());
        const int ready = poll(&wanted, 1, static_cast<int>(std::max(left, milliseconds(0)).count()));
        if (ready > 0) return true;
        if (ready == 0 || errno != EINTR) return false;
    }
}

} // namespace vorn
