#include "VornMac/Text/QuestText.h"

#include "Platform/Base/Match.h"
#include "VornMacCore/Wire/RejectionCopy.h"
#include "VornMacCore/Wire/RewardFormat.h"

namespace vorn {

StatusText availabilityNote(const QuestAvailability& availability)
{
    const Match note{
        [](const QuestAvailability::Cooldown& cooldown) -> StatusText {
            return {Tone::good, "Paid. You can upload again on " + dayText(cooldown.until) + "."};
        },
        [](const QuestAvailability::LastRejected& rejected) -> StatusText {
            return {Tone::warning, "Last time: " + RejectionCopy::text(rejected.reasonKey)};
        },
        [](QuestAvailability::InReview) -> StatusText { return {Tone::waiting, "Your last upload is being checked."}; },
        [](QuestAvailability::Available) -> StatusText { return {}; },
    };
    return std::visit(note, availability.state());
}

std::string availabilityLine(const QuestAvailability& availability)
{
    const std::string note = availabilityNote(availability).text;
    return note.empty() ? "You can upload your chat." : note;
}

std::string rewardText(const std::optional<NimbrelState>& nimbrel)
{
    const auto amount = nimbrel ? RewardFormat::usd(nimbrel->quest.rewardUsd) : std::nullopt;
    return amount.value_or("the quest reward");
}

std::string earnedText(const SubmissionStatus& submission, const std::string& questReward)
{
    return RewardFormat::usd(submission.rewardUsd).value_or(questReward);
}

bool isAmount(const std::string& earned)
{
    return RewardFormat::dollars(earned).has_value();
}

std::string countedText(const std::string& earned, double part)
{
    const auto whole = RewardFormat::dollars(earned);
    return whole && part < 1 ? RewardFormat::usd(*whole * part) : earned;
}

std::string rejectionText(const SubmissionStatus& submission)
{
    return RejectionCopy::text(submission.rejectionReasonKey);
}

} // namespace vorn
