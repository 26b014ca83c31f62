#include "VornMac/Application/PresenceRules.h"

#include "Platform/Base/Match.h"

#include <cmath>

namespace vorn::presence {

bool staysAwake(const UploadPhase& phase)
{
    return percentOnIcon(phase).has_value();
}

std::optional<int> percentOnIcon(const UploadPhase& phase)
{
    const Match percent{
        [](const phase::Preparing&) -> std::optional<int> { return 0; },
        [](const phase::Uploading& uploading) -> std::optional<int> {
            return static_cast<int>(std::floor(uploading.fraction * 100));
        },
        [](const phase::Finishing&) -> std::optional<int> { return 100; },
        [](const auto&) -> std::optional<int> { return std::nullopt; },
    };
    return std::visit(percent, phase);
}

bool isAccepted(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now)
{
    return now && (!before || before->id != now->id);
}

bool isReviewed(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now)
{
    const bool wasReviewed = before && before->status.isFinal();
    return now && now->status.isFinal() && (!wasReviewed || isAccepted(before, now));
}

Alert alertFor(const ReviewStatus& outcome, WindowState window)
{
    const bool isGood = outcome.is(ReviewStatus::Kind::approved);
    if (window.isWindowActive) return {.notifies = false, .sounds = isGood && !window.reducesMotion};
    return {.notifies = true, .sounds = isGood};
}

} // namespace vorn::presence
