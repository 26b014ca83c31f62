#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>

namespace vorn::testing {

/// A Unix socket that accepts connections and never answers.
class ListeningSocket {
public:
    explicit ListeningSocket(const std::filesystem::path& path)
        : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.native().size() >= sizeof address.sun_path) throw std::length_error(path);
        std::ranges::copy(path.native(), address.sun_path);
        const auto* any = reinterpret_cast<const sockaddr*>(&address);
        if (bind(socket_.get(), any, sizeof address) != 0 || listen(socket_.get(), 8) != 0)
            throw std::runtime_error("cannot listen at " + path.native());
    }

private:
    FileDescriptor socket_;
};

} // namespace vorn::testing
