#pragma once

#include "Platform/HTTP/SocketTraffic.h"

#include <chrono>
#include <cstdint>

namespace vorn {

/// Notices when nothing has moved on a connection for the limit. The caller passes the time.
class StallWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit StallWatch(std::chrono::milliseconds limit) noexcept : limit_(limit) {}

    void begin(Time now) noexcept { lastMove_ = nextLook_ = now; }
    /// The request goes out on `socket`: what the socket moved before does not count.
    void beginRequest(int socket, Time now) noexcept;
    /// Takes the body bytes received and sent so far, as libcurl counts them.
    void note(std::int64_t received, std::int64_t sent) noexcept;

    /// Whether nothing has moved for the limit. Looks at the socket only once `nextLook` is reached.
    bool isStalled(int socket, Time now) noexcept;
    Time nextLook() const noexcept { return nextLook_; }

private:
    /// Everything that shows movement. libcurl's counts serve where the system has none; they count buffered bytes as
    /// sent.
    struct Movement {
        SocketTraffic traffic;
        std::int64_t received = 0, sent = 0;

        bool operator==(const Movement&) const = default;
    };

    std::chrono::milliseconds limit_;
    Time lastMove_, nextLook_;
    Movement seen_; ///< at the last look
    std::int64_t received_ = 0, sent_ = 0;
};

} // namespace vorn
