#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace vorn {

/// What a request sends after its head. Not copied: a transfer asks for the next bytes when it can send them.
class HTTPBody {
public:
    virtual ~HTTPBody() = default;

    /// In bytes; always the same.
    virtual std::int64_t size() const noexcept = 0;

    /// Puts the bytes from `at` on into `into`, as many as fit or are left, and gives how many. May be asked for the
    /// same bytes again. Called on the session's own thread, and all of the session's transfers wait meanwhile: reading
    /// a local file is fine, waiting for anything else is not. What it throws, the request fails with.
    virtual std::size_t read(std::int64_t at, std::span<std::byte> into) const = 0;
};

/// A body in memory.
class BytesBody final : public HTTPBody {
public:
    explicit BytesBody(ByteBuffer bytes) : bytes_(std::move(bytes)) {}
    explicit BytesBody(ByteView bytes) : bytes_(bytes.begin(), bytes.end()) {}

    ByteView bytes() const noexcept { return bytes_; }

    std::int64_t size() const noexcept override { return static_cast<std::int64_t>(bytes_.size()); }
    std::size_t read(std::int64_t at, std::span<std::byte> into) const override;

private:
    ByteBuffer bytes_;
};

} // namespace vorn
