#pragma once

#include <vector>

namespace vorn {

/// The sockets of a session's connections, to find the one that a request goes out on: a connection that is used again
/// was opened by somebody else. Threads: the session's own.
class OpenSockets {
public:
    /// Makes a socket; -1 with `errno` when that fails.
    int open(int family, int type, int protocol);
    int close(int socket);

    /// The socket that leads from `localPort` to `peerPort` of `peer`, an IP address; -1 if there is none. The local
    /// port alone does not name it: the system gives the same one to connections to different peers.
    int find(int localPort, const char* peer, int peerPort) const noexcept;

private:
    std::vector<int> sockets_;
};

/// From now on, closing `socket` drops what was not sent yet and resets the connection.
void resetOnClose(int socket) noexcept;

} // namespace vorn
