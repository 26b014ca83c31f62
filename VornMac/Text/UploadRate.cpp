#include "VornMac/Text/UploadRate.h"

namespace vorn {

bool UploadRate::update(std::int64_t bytes, Time now)
{
    if (!samples_.empty() && bytes < samples_.back().bytes) samples_.clear();
    if (!samples_.empty() && now - samples_.back().at < window_.betweenSamples) return false;
    samples_.push_back({bytes, now});
    while (samples_.size() > 2 && now - samples_.front().at > window_.longest) samples_.pop_front();
    return true;
}

std::optional<double> UploadRate::bytesPerSecond() const
{
    if (samples_.empty()) return std::nullopt;
    const Time span = samples_.back().at - samples_.front().at;
    if (span < window_.enough) return std::nullopt;
    return static_cast<double>(samples_.back().bytes - samples_.front().bytes) /
           std::chrono::duration<double>(span).count();
}

} // namespace vorn
