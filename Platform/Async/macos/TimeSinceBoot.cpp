#include "Platform/Async/TimeSinceBoot.h"

#include <time.h>

namespace vorn {

std::chrono::nanoseconds timeSinceBoot() noexcept
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC_RAW, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace vorn
