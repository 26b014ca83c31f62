#include "Tools/Terminal/QuestWords.h"

#include "VornMacCore/Quest/RejectionCopy.h"
#include "VornMacCore/Quest/RewardFormat.h"

#include <fmt/format.h>

namespace vorn {
namespace {

template <class... Cases>
struct Match : Cases... {
    using Cases::operator()...;
};

} // namespace

std::string availabilityText(const QuestAvailability& availability)
{
    const Match text{
        [](const QuestAvailability::Cooldown& cooldown) {
            return "Paid. You can upload again on " + dayText(cooldown.until) + ".";
        },
        [](const QuestAvailability::LastRejected& rejected) {
            return "Last time: " + RejectionCopy::text(rejected.reasonKey);
        },
        [](const QuestAvailability::Available&) { return std::string("You can upload your chat."); },
        [](const QuestAvailability::InReview&) { return std::string("Your last upload is being checked."); },
    };
    return std::visit(text, availability.state());
}

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

std::string submissionText(const SubmissionStatus& submission, const std::string& questReward)
{
    if (submission.status == "approved") {
        return "You earned " + RewardFormat::usd(submission.rewardUsd).value_or(questReward) +
               ". Thanks for your Nimbrel chat. The reward is in your Vorn balance.";
    }
    if (submission.status == "rejected") {
        return "Not accepted this time. " + RejectionCopy::text(submission.rejectionReasonKey);
    }
    if (submission.status == "expired") return "Upload stopped. The upload didn't finish. Try again from your chat.";
    if (submission.status == "review_pending") return "Upload received. A person is checking it.";
    return "Upload received. Checking your chat.";
}

} // namespace vorn
