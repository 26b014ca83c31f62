#pragma once

#include "Platform/HTTP/SocketRelay.h"

#include <memory>
#include <vector>

#include <curl/curl.h>

namespace vorn {

/// The sockets of a session's connections, to find the one that a request goes out on: a connection that is used again
/// was opened by somebody else. Threads: the session's own.
class OpenSockets {
public:
    /// Makes a socket; -1 with `errno` when that fails.
    int open(int family, int type, int protocol);
    int close(int socket);

    /// The socket that leads from `localPort` to `peerPort` of `peer`, an IP address; -1 if there is none. The local
    /// port alone does not name it: the system gives the same one to connections to different peers. Behind a relay it
    /// is another one than `open` gave, which stays in use.
    int find(int localPort, const char* peer, int peerPort) const noexcept;

    /// Puts a relay before the connection of `socket`, as `find` gives it, unless it has one. Without one, where the
    /// system lacks the means, the connection is as good as others, and a refusal that ends it may be lost.
    void putRelayBefore(int socket) noexcept;
    /// Has every relay move what it can.
    void moveRelays() noexcept;
    /// What the relays wait for. Good until the next call.
    std::vector<curl_waitfd>& awaitedByRelays();

private:
    struct OpenSocket {
        int number; ///< as libcurl knows it
        std::unique_ptr<SocketRelay> relay;

        int connection() const noexcept { return relay ? relay->connection() : number; }
    };

    std::vector<OpenSocket> sockets_;
    std::vector<curl_waitfd> awaited_;
};

/// From now on, closing `socket` drops what was not sent yet and resets the connection.
void resetOnClose(int socket) noexcept;

} // namespace vorn
