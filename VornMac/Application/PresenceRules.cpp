#include "VornMac/Application/PresenceRules.h"

#include "VornMac/Text/UploadText.h"

#include <cmath>
#include <variant>

namespace vorn::presence {

bool staysAwake(const UploadPhase& phase)
{
    return percentOnIcon(phase).has_value();
}

std::optional<int> percentOnIcon(const UploadPhase& phase)
{
    if (std::holds_alternative<phase::Idle>(phase) || std::holds_alternative<phase::Failed>(phase)) return std::nullopt;
    return static_cast<int>(std::floor(uploadBar(phase).value * 100));
}

bool isNewSubmission(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now)
{
    return now && (!before || before->id != now->id);
}

bool isReviewed(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now)
{
    const bool wasReviewed = before && before->status.isFinal();
    return now && now->status.isFinal() && (!wasReviewed || isNewSubmission(before, now));
}

Alert alertFor(const ReviewStatus& outcome, WindowState window)
{
    const bool isGood = outcome.is(ReviewStatus::Kind::approved);
    if (window.isWindowActive) return {.notifies = false, .sounds = isGood && !window.reducesMotion};
    return {.notifies = true, .sounds = isGood};
}

} // namespace vorn::presence
