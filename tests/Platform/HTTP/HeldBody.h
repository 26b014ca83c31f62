#pragma once

#include "Platform/HTTP/HTTPBody.h"

#include <algorithm>
#include <future>

namespace vorn::testing {

/// `size` bytes of "x". Reading beyond `at` waits for `event`, as for a slow disk.
class HeldBody final : public HTTPBody {
public:
    HeldBody(std::int64_t size, std::int64_t at, std::shared_future<void> event)
        : size_(size), at_(at), event_(std::move(event))
    {
    }

    std::int64_t size() const noexcept override { return size_; }
    std::size_t read(std::int64_t at, std::span<std::byte> into) const override
    {
        if (at >= at_) event_.wait();
        const auto count = std::min<std::int64_t>(std::ssize(into), (at < at_ ? at_ : size_) - at);
        std::fill_n(into.begin(), count, std::byte{'x'});
        return static_cast<std::size_t>(count);
    }

private:
    std::int64_t size_, at_;
    std::shared_future<void> event_;
};

} // namespace vorn::testing
