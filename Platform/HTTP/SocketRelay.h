#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <cstddef>
#include <span>
#include <vector>

#include <curl/curl.h>

namespace vorn {

/// Relays between libcurl and a connection. libcurl abandons a connection when a write fails, without reading what the
/// server sent before the cut, and within TLS only libcurl can read that. Through a local socket pair no write fails
/// before libcurl has read all that arrived. Threads: the session's own.
class SocketRelay {
public:
    /// Redirects the descriptor `socket`, which may be in use, through this object. Throws `std::system_error` and
    /// changes nothing on failure.
    explicit SocketRelay(int socket);
    SocketRelay(SocketRelay&&) = delete;

    /// The connection itself.
    int connection() const noexcept { return connection_.get(); }

    /// Moves what it can without blocking.
    void move() noexcept;

    /// Appends to `watched` what `move` waits for.
    void watch(std::vector<curl_waitfd>& watched) const;

private:
    /// Bytes in transit in one direction.
    class Stream {
    public:
        bool isEmpty() const noexcept { return begin_ == end_; }
        bool hasEnded() const noexcept { return ended_; }  ///< the source has ended
        bool isBroken() const noexcept { return broken_; } ///< reading or writing failed

        /// Returns whether bytes came in.
        bool takeFrom(int socket) noexcept;
        /// Returns whether bytes went out.
        bool giveTo(int socket) noexcept;
        /// What to wait for at the source and at the target, as flags of `curl_waitfd`.
        short awaitedFrom() const noexcept;
        short awaitedTo() const noexcept;

    private:
        std::vector<char> bytes_ = std::vector<char>(128 * 1024);
        std::size_t begin_ = 0, end_ = 0; ///< the range not yet written
        bool ended_ = false, broken_ = false;
    };

    void passOnTheEnd() noexcept;

    int far_; ///< libcurl's end of the pair, which it closes
    FileDescriptor connection_;
    FileDescriptor near_{-1}; ///< the other end
    Stream out_, in_;
};

} // namespace vorn
