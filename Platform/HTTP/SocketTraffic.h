#pragma once

#include <cstdint>

namespace vorn {

/// What a TCP connection has moved so far. Bytes in the system's buffers do not count: on a slow line sending them
/// takes minutes after the last write.
struct SocketTraffic {
    std::uint64_t received = 0;     ///< bytes that arrived
    std::uint64_t acknowledged = 0; ///< grows with the bytes that the peer has acknowledged

    bool operator==(const SocketTraffic&) const = default;
};

/// The traffic of `socket`; zero when the system does not report it.
SocketTraffic trafficOf(int socket) noexcept;

} // namespace vorn
