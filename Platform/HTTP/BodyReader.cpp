#include "Platform/HTTP/BodyReader.h"

#include "Platform/HTTP/URLError.h"

#include <algorithm>

namespace vorn {

std::optional<std::size_t> BodyReader::peek(std::span<std::byte> into) noexcept
{
    const std::int64_t left = size() - position_;
    if (left <= 0) return 0;
    try {
        const auto wanted = std::min<std::int64_t>(left, std::ssize(into));
        const std::size_t count = body_->read(position_, into.first(static_cast<std::size_t>(wanted)));
        // libcurl asks until the announced size is reached: a body that ends early would leave the server waiting.
        if (count == 0) throw URLError(URLError::Code::requestBodyStreamExhausted);
        return count;
    } catch (...) {
        failure_ = std::current_exception();
        return std::nullopt;
    }
}

} // namespace vorn
