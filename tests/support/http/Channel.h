#pragma once

#include "tests/support/http/TestAuthority.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace vorn::testing {

/// How the bytes of a connection travel. Its socket must not block; whoever uses the channel waits.
class Channel {
public:
    struct Step {
        enum class Kind { moved, waitsForInput, waitsForOutput, gone };

        Kind kind;
        std::size_t bytes = 0; ///< how many moved; none read when the client has ended its half properly
    };

    virtual ~Channel() = default;
    virtual Step read(std::span<char> into) = 0;
    virtual Step write(std::string_view bytes) = 0;
    /// Says that nothing more will be sent, where the channel has words of its own for it.
    virtual void sayGoodbye() = 0;

    /// As they are.
    static std::unique_ptr<Channel> plain(int socket);
    /// Inside of TLS; the handshake is part of the first step.
    static std::unique_ptr<Channel> secure(int socket, const ServerIdentity& identity);
};

} // namespace vorn::testing
