#include "Tools/Terminal/QuestWords.h"

#include "Platform/Base/Dates.h"
#include "Platform/Base/Match.h"
#include "VornMac/Text/QuestText.h"

namespace vorn {

std::string availabilityText(const QuestAvailability& availability)
{
    const std::string note = availabilityNote(availability);
    return note.empty() ? "You can upload your chat." : note;
}

std::string nextUploadText(const QuestAvailability& availability)
{
    const auto* cooldown = std::get_if<QuestAvailability::Cooldown>(&availability.state());
    return cooldown == nullptr ? "" : "Upload again on " + dayText(cooldown->until) + " with your newer chats.";
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
        return "You earned " + earnedText(submission, questReward) +
               ". Thanks for your Nimbrel chat. The reward is in your Vorn balance.";
    }
    if (submission.status == "rejected") return "Not accepted this time. " + rejectionText(submission);
    if (submission.status == "expired") return "Upload stopped. The upload didn't finish. Try again from your chat.";
    if (submission.status == "review_pending") return "Upload received. A person is checking it.";
    return "Upload received. Checking your chat.";
}

} // namespace vorn
