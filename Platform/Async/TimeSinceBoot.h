#pragma once

#include <chrono>

namespace vorn {

/// Time since the machine started, asleep or awake. Never set.
std::chrono::nanoseconds timeSinceBoot() noexcept;

} // namespace vorn
