#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

namespace vorn {

/// Compresses `data` to raw DEFLATE (RFC 1951) at the start of `room`. Returns the compressed size; 0 if it failed or
/// did not fit.
using DeflateEncoder = std::function<std::size_t(ByteView data, std::span<std::byte> room)>;

/// Compresses about as well as zlib's default level, in less than half the time. Threads: one at a time for each
/// encoder.
DeflateEncoder libdeflateEncoder();

/// Compresses, and verifies each result with an independent implementation. Threads: as the encoder's.
class CheckedDeflate {
public:
    explicit CheckedDeflate(DeflateEncoder encoder) : encoder_(std::move(encoder)) {}

    /// Compresses `data` into the start of `room`, which is as large as `data`, and returns the compressed size.
    /// Nothing if the data should be stored instead: compressing failed, saved nothing, or did not verify. Overwrites
    /// `room`, but touches no memory beyond what the encoder wrote.
    std::optional<std::size_t> compress(ByteView data, std::span<std::byte> room) const;

private:
    DeflateEncoder encoder_;
};

} // namespace vorn
