#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

namespace vorn {

/// Compresses `data` to raw DEFLATE (RFC 1951) at the start of `room` and returns how many bytes that took; 0 when it
/// failed or did not fit.
using DeflateEncoder = std::function<std::size_t(ByteView data, std::span<std::byte> room)>;

/// As small as zlib's default level in less than half of its time. Threads: an encoder is used by one at a time.
DeflateEncoder libdeflateEncoder();

/// Compresses, and reads every result back with an implementation that shares no code with the encoder: what is
/// handed out can be inflated, whatever the encoder got wrong. Threads: as the encoder's.
class CheckedDeflate {
public:
    explicit CheckedDeflate(DeflateEncoder encoder) : encoder_(std::move(encoder)) {}

    /// Compresses `data` at the start of `room`, which is as large as `data`, and returns how many bytes that took.
    /// Nothing when they are better kept as they are: compressing failed, did not make them smaller, or did not come
    /// out right. `room` is overwritten in any case, and untouched beyond what the encoder wrote.
    std::optional<std::size_t> compress(ByteView data, std::span<std::byte> room) const;

private:
    DeflateEncoder encoder_;
};

} // namespace vorn
