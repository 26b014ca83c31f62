#include "Tools/Terminal/StateJSON.h"

#include "Platform/Base/Match.h"

namespace vorn {

std::string availabilityName(const QuestAvailability& availability)
{
    const Match name{
        [](const QuestAvailability::Cooldown&) { return "cooldown"; },
        [](const QuestAvailability::LastRejected&) { return "lastRejected"; },
        [](const QuestAvailability::Available&) { return "available"; },
        [](const QuestAvailability::InReview&) { return "inReview"; },
    };
    return std::visit(name, availability.state());
}

StateJSON jsonOf(const SubmissionStatus& submission)
{
    return {{"id", submission.id},
            {"status", submission.status.word()},
            {"rejectionReasonKey", orNull(submission.rejectionReasonKey)},
            {"rewardUsd", orNull(submission.rewardUsd)}};
}

} // namespace vorn
