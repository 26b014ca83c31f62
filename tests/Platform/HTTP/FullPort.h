#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <cstdint>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <vector>

#include <fcntl.h>

namespace vorn::testing {

/// A local port on which connecting never ends: its queue of connections is full, so the system does not answer.
class FullPort {
public:
    FullPort()
    {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address_;
        auto* const address = reinterpret_cast<sockaddr*>(&address_);
        if (bind(listener_.get(), address, size) != 0 || listen(listener_.get(), 0) != 0 ||
            getsockname(listener_.get(), address, &size) != 0) {
            throw std::runtime_error("no port to fill");
        }
        while (connectsAnother()) {
        }
    }

    std::string url() const { return "http://127.0.0.1:" + std::to_string(ntohs(address_.sin_port)) + "/"; }

private:
    bool connectsAnother()
    {
        const FileDescriptor& next = waiting_.emplace_back(socket(AF_INET, SOCK_STREAM, 0));
        fcntl(next.get(), F_SETFL, O_NONBLOCK);
        if (connect(next.get(), reinterpret_cast<const sockaddr*>(&address_), sizeof address_) == 0) return true;
        pollfd watched{next.get(), POLLOUT, 0};
        return poll(&watched, 1, 50) > 0;
    }

    FileDescriptor listener_{socket(AF_INET, SOCK_STREAM, 0)};
    sockaddr_in address_{};
    std::vector<FileDescriptor> waiting_;
};

} // namespace vorn::testing
