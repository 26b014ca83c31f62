#pragma once

#include "tests/support/http/TestAuthority.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace vorn::testing {

/// The transport of a connection's bytes. Its socket must not block; the owner of the channel waits.
class Channel {
public:
    struct Step {
        enum class Kind { moved, waitsForInput, waitsForOutput, gone };

        Kind kind;
        std::size_t bytes = 0; ///< how many moved; 0 for a read when the client has closed its half properly
    };

    virtual ~Channel() = default;
    virtual Step read(std::span<char> into) = 0;
    virtual Step write(std::string_view bytes) = 0;
    /// Announces the end of sending, if the channel has a message for that.
    virtual void sayGoodbye() = 0;

    /// Without encryption.
    static std::unique_ptr<Channel> plain(int socket);
    /// Inside TLS; the handshake is part of the first step.
    static std::unique_ptr<Channel> secure(int socket, const ServerIdentity& identity);
};

} // namespace vorn::testing
