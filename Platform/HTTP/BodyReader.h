#pragma once

#include "Platform/HTTP/HTTPBody.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace vorn {

/// Reads a request's body from its beginning to its end.
class BodyReader {
public:
    /// Null reads as empty.
    explicit BodyReader(std::shared_ptr<const HTTPBody> body) noexcept : body_(std::move(body)) {}

    /// In bytes.
    std::int64_t size() const noexcept { return body_ ? body_->size() : 0; }

    /// Reads the next bytes into `into` and returns how many: 0 at the end, nothing when the body failed. Returns the
    /// same bytes again until `advance`.
    std::optional<std::size_t> peek(std::span<std::byte> into) noexcept;
    void advance(std::size_t count) noexcept { position_ += static_cast<std::int64_t>(count); }

    /// Hands over the exception with which the body failed; null when it has not failed.
    std::exception_ptr takeFailure() noexcept { return std::exchange(failure_, nullptr); }

    /// Releases the body.
    void close() noexcept { body_.reset(); }

private:
    std::shared_ptr<const HTTPBody> body_;
    std::int64_t position_ = 0;
    std::exception_ptr failure_;
};

} // namespace vorn
