#pragma once

#include <chrono>

namespace vorn {

/// Monotonic time since the machine started, including sleep.
std::chrono::nanoseconds timeSinceBoot() noexcept;

} // namespace vorn
