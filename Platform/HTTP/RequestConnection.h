#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <string>

#include <curl/curl.h>

namespace vorn {

class OpenSockets;

/// The connection on which a request goes out, once.
/// libcurl sends a request again when the kept-alive connection it used dies before an answer. The server may have
/// carried out the first one, so a second try is refused, both on another old connection (`begin`) and on a new one
/// (`open`).
class RequestConnection {
public:
    /// `sockets` outlives the request.
    void attach(OpenSockets& sockets) noexcept { sockets_ = &sockets; }

    /// Makes a socket for a new connection; CURL_SOCKET_BAD when that fails or would be for a second try.
    curl_socket_t open(const curl_sockaddr& address) noexcept;
    /// The request goes out on the connection from `localPort` to `peerPort` of `peer`, behind a relay if `relayed`.
    /// Returns false for a second try.
    bool begin(int localPort, const char* peer, int peerPort, bool relayed) noexcept;
    /// Whether libcurl wanted to send the request again.
    bool wasTriedAgain() const noexcept { return triedAgain_; }

    /// -1 before there is one.
    int socket() const noexcept { return socket_.get(); }
    /// Whether input that libcurl has not read has arrived since the last call. What stays unread counts once.
    bool hasNewInput() noexcept;
    /// Reads what has arrived, up to 64 KiB, which is more than a refusal has.
    std::string readRest() const;

    /// Makes closing drop unsent bytes: otherwise the system would go on sending them long after the request has ended.
    void resetOnClose() const noexcept;
    void close() noexcept { socket_.reset(); }

private:
    bool mayGoOut() noexcept;

    OpenSockets* sockets_ = nullptr;
    FileDescriptor socket_{-1}; ///< a duplicate: libcurl may close its own, and the number be reused
    int waiting_ = 0;           ///< unread bytes in the socket at the last `hasNewInput`
    bool begun_ = false;        ///< the request has gone out, or is about to
    bool triedAgain_ = false;
};

} // namespace vorn
