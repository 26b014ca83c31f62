#pragma once

#include "Platform/HTTP/SocketRelay.h"

#include <memory>
#include <vector>

#include <curl/curl.h>

namespace vorn {

/// The sockets of a session's connections. Finds the one that a request uses, which an earlier request may have opened.
/// Threads: the session's own.
class OpenSockets {
public:
    /// Creates a socket; on failure -1 with `errno` set.
    int open(int family, int type, int protocol);
    int close(int socket);

    /// The socket connected from `localPort` to `peerPort` of the IP address `peer`; -1 if there is none. The local
    /// port alone is ambiguous: connections to different peers may share it. Behind a relay this is the relay's socket,
    /// not the one from `open`.
    int find(int localPort, const char* peer, int peerPort) const noexcept;

    /// Puts a relay before the connection of `socket` (from `find`) unless it has one. On failure the connection works
    /// without one, and may then lose the answer of a server that refuses a body and cuts the connection.
    void putRelayBefore(int socket) noexcept;
    /// Lets every relay move what it can.
    void moveRelays() noexcept;
    /// What the relays wait for; valid until the next call.
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

/// Makes closing `socket` drop unsent bytes and reset the connection.
void resetOnClose(int socket) noexcept;

} // namespace vorn
