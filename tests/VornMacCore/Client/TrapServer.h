#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <cstddef>
#include <stdexcept>
#include <string>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace vorn::testing {

/// Accepts and counts connections to any address of this machine, and sends nothing: nothing may connect to it.
class TrapServer {
public:
    TrapServer() : listener_(socket(AF_INET6, SOCK_STREAM, 0))
    {
        const int no = 0;
        setsockopt(listener_.get(), IPPROTO_IPV6, IPV6_V6ONLY, &no, sizeof no);
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_addr = in6addr_any;
        socklen_t size = sizeof address;
        auto* const anyAddress = reinterpret_cast<sockaddr*>(&address);
        if (bind(listener_.get(), anyAddress, size) != 0 || listen(listener_.get(), 64) != 0 ||
            getsockname(listener_.get(), anyAddress, &size) != 0)
            throw std::runtime_error("cannot set up the trap");
        port_ = std::to_string(ntohs(address.sin6_port));
    }

    const std::string& port() const { return port_; }

    /// How many connections were made since the last call.
    std::size_t connections() const
    {
        std::size_t count = 0;
        while (hasConnection()) count += FileDescriptor(accept(listener_.get(), nullptr, nullptr)) ? 1U : 0U;
        return count;
    }

private:
    bool hasConnection() const
    {
        pollfd watched{listener_.get(), POLLIN, 0};
        return poll(&watched, 1, 0) > 0;
    }

    FileDescriptor listener_;
    std::string port_;
};

} // namespace vorn::testing
