#pragma once

#include <cstdint>

namespace vorn {

/// What a TCP connection has moved so far. Bytes that only wait in the system's buffers have not moved: on a slow line
/// they can keep a connection busy for minutes after the last of them was written.
struct SocketTraffic {
    std::uint64_t received = 0;     ///< bytes that arrived
    std::uint64_t acknowledged = 0; ///< grows with the bytes that the other side has confirmed

    bool operator==(const SocketTraffic&) const = default;
};

/// The traffic of `socket`; nothing moved when the system cannot tell.
SocketTraffic trafficOf(int socket) noexcept;

} // namespace vorn
