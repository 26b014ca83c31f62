#include "tests/VornSandbox/Service/RawClient.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace vorn::testing {

RawClient::RawClient(int port) : socket_(socket(AF_INET, SOCK_STREAM, 0))
{
    std::signal(SIGPIPE, SIG_IGN); // a closed connection shows when it is read
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval patience{.tv_sec = 60, .tv_usec = 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (!socket_ || connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("cannot connect");
    }
}

void RawClient::send(std::string_view text) const
{
    while (!text.empty()) {
        const ssize_t sent = ::send(socket_.get(), text.data(), text.size(), 0);
        if (sent <= 0) return; // the other side has closed, which reading will show
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void RawClient::finishSending() const
{
    shutdown(socket_.get(), SHUT_WR);
}

bool RawClient::readSome(std::string& text) const
{
    std::array<char, 4096> piece{};
    const ssize_t count = recv(socket_.get(), piece.data(), piece.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) throw std::runtime_error("nothing comes");
    if (count > 0) text.append(piece.data(), static_cast<std::size_t>(count));
    return count > 0;
}

std::string RawClient::readToEnd() const
{
    std::string text;
    while (readSome(text)) {
    }
    return text;
}

std::string RawClient::readTo(std::string_view mark) const
{
    std::string text;
    while (text.find(mark) == std::string::npos && readSome(text)) {
    }
    return text;
}

std::string rawRequest(int port, std::string_view methodAndPath, std::string_view headers)
{
    return std::string(methodAndPath) + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n" +
           std::string(headers) + "\r\n";
}

} // namespace vorn::testing
