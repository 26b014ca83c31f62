#include "Platform/HTTP/StallWatch.h"

#include <algorithm>
#include <utility>

namespace vorn {
namespace {

/// A stall is noticed at most this late, whatever the limit.
constexpr std::chrono::milliseconds longestBetweenLooks{250};

} // namespace

void StallWatch::beginRequest(int socket, Time now) noexcept
{
    seen_ = {.traffic = trafficOf(socket)};
    lastMove_ = now;
}

void StallWatch::note(std::int64_t received, std::int64_t sent) noexcept
{
    received_ = received;
    sent_ = sent;
}

bool StallWatch::isStalled(int socket, Time now) noexcept
{
    if (now < nextLook_) return false;
    const Movement movement{.traffic = trafficOf(socket), .received = received_, .sent = sent_};
    if (std::exchange(seen_, movement) != movement) lastMove_ = now;
    // Often enough to know when the stall began: movement counts from the look that finds it.
    const auto untilNext = std::min(limit_ / 16 + std::chrono::milliseconds(1), longestBetweenLooks);
    nextLook_ = std::min(now + untilNext, lastMove_ + limit_);
    return now - lastMove_ >= limit_;
}

} // namespace vorn
