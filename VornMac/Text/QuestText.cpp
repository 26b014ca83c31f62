#include "VornMac/Text/QuestText.h"

#include "Platform/Base/Match.h"
#include "VornMacCore/Quest/RejectionCopy.h"
#include "VornMacCore/Quest/RewardFormat.h"

namespace vorn {
std::string availabilityNote(const QuestAvailability& availability)
{
    const Match note{
        [](const QuestAvailability::Cooldown& cooldown) {
            return "Paid. You can upload again on " + dayText(cooldown.until) + ".";
        },
        [](const QuestAvailability::LastRejected& rejected) {
            return "Last time: " + RejectionCopy::text(rejected.reasonKey);
        },
        [](QuestAvailability::InReview) { return std::string("Your last upload is being checked."); },
        [](QuestAvailability::Available) { return std::string(); },
    };
    return std::visit(note, availability.state());
}

std::string earnedText(const SubmissionStatus& submission, const std::string& questReward)
{
    return RewardFormat::usd(submission.rewardUsd).value_or(questReward);
}

std::string rewardText(const std::optional<NimbrelState>& quest)
{
    const auto amount = quest ? RewardFormat::usd(quest->quest.rewardUsd) : std::nullopt;
    return amount.value_or("the quest reward");
}

std::string rejectionText(const SubmissionStatus& submission)
{
    return RejectionCopy::text(submission.rejectionReasonKey);
}

} // namespace vorn
