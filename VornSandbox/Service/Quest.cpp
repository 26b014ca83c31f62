#include "VornSandbox/Service/Quest.h"

#include "VornSandbox/Service/Submission.h"

namespace vorn::sandbox {

QuestStanding questStanding(const StateDatabase& state, const Settings& settings, const std::string& userId)
{
    const auto last = newestSubmission(state, userId, "status NOT IN ('open', 'aborted')");
    if (!last || last->status == "expired") return {.status = "available", .rejectionReasonKey = {}, .availableAt = {}};
    if (last->status == "rejected") {
        return {.status = "rejected", .rejectionReasonKey = last->reason, .availableAt = {}};
    }
    if (last->status == "approved") {
        return {.status = "approved", .rejectionReasonKey = {}, .availableAt = last->decidedAt + settings.cooldown};
    }
    return {.status = "submitted", .rejectionReasonKey = {}, .availableAt = {}};
}

} // namespace vorn::sandbox
