#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <cstddef>
#include <span>
#include <vector>

#include <curl/curl.h>

namespace vorn {

/// Stands between libcurl and a connection. libcurl gives a connection up when a write fails, without reading what the
/// server has said before it cut it, and behind TLS only libcurl can read that. So it writes to a local pair of sockets
/// instead, where no write fails before it has read all that has arrived. Threads: the session's own.
class SocketRelay {
public:
    /// The descriptor `socket`, which may be in use, leads to the connection through this object from now on. Throws
    /// `std::system_error`, and leaves it as it was.
    explicit SocketRelay(int socket);
    SocketRelay(SocketRelay&&) = delete;

    /// The connection itself.
    int connection() const noexcept { return connection_.get(); }

    /// Moves what can be moved without waiting.
    void move() noexcept;

    /// Appends to `watched` what `move` waits for.
    void watch(std::vector<curl_waitfd>& watched) const;

private:
    /// Bytes on their way in one direction.
    class Stream {
    public:
        bool isEmpty() const noexcept { return begin_ == end_; }
        bool hasEnded() const noexcept { return ended_; }  ///< nothing more comes in
        bool isBroken() const noexcept { return broken_; } ///< an end of its way failed

        /// Gives whether bytes came in.
        bool takeFrom(int socket) noexcept;
        /// Gives whether bytes went out.
        bool giveTo(int socket) noexcept;
        /// What to wait for, as flags of `curl_waitfd`, where the bytes come from and where they go.
        short awaitedFrom() const noexcept;
        short awaitedTo() const noexcept;

    private:
        std::vector<char> bytes_ = std::vector<char>(128 * 1024);
        std::size_t begin_ = 0, end_ = 0; ///< those that wait
        bool ended_ = false, broken_ = false;
    };

    void passOnTheEnd() noexcept;

    int far_; ///< the end of the pair that libcurl holds, and closes
    FileDescriptor connection_;
    FileDescriptor near_{-1}; ///< the other end
    Stream out_, in_;
};

} // namespace vorn
