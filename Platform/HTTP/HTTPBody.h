#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace vorn {

/// The body of a request. Never copied: a transfer reads the next bytes when it can send them.
class HTTPBody {
public:
    virtual ~HTTPBody() = default;

    /// In bytes; constant.
    virtual std::int64_t size() const noexcept = 0;

    /// Copies bytes into `into`, beginning with the one at `at`: as many as fit or are left. Returns how many. May be
    /// called again for the same bytes. Runs on the session's thread and holds up all its transfers: reading a local
    /// file is fine, any other waiting is not. An exception from it fails the request.
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
