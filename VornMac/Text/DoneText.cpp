#include "VornMac/Text/DoneText.h"

#include "Platform/Base/Dates.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/QuestText.h"

#include <algorithm>
#include <iterator>

namespace vorn {
namespace {

constexpr const char* notAccepted = "Not accepted";
constexpr const char* elsewhere = "The result also shows on the quest in the Vorn app.";

/// The title and the subtitle of a screen, as sentences on one line.
std::string sentences(const ScreenText& text)
{
    return text.title + ". " + text.subtitle + ".";
}

ScreenText approved(const std::string& earned)
{
    return {.title = "You earned " + earned,
            .subtitle = "Thanks for your Nimbrel chat",
            .lead = {"The reward is in your Vorn balance."}};
}

ScreenText rejected(const SubmissionStatus& submission)
{
    return {.title = notAccepted, .subtitle = "This time", .status = {Tone::warning, rejectionText(submission)}};
}

ScreenText expired()
{
    return {.title = "Upload stopped",
            .subtitle = "Nothing was sent",
            .status = {Tone::warning, "The upload didn't finish. Try again from your chat."}};
}

ScreenText inReview(const char* what)
{
    return {.title = "Upload received",
            .subtitle = what,
            .hints = {"This usually takes a minute or two.", std::string("You can close this window. ") + elsewhere}};
}

ScreenText textOf(const SubmissionStatus& submission, const std::string& questReward)
{
    switch (submission.status.kind()) {
    case ReviewStatus::Kind::approved: return approved(earnedText(submission, questReward));
    case ReviewStatus::Kind::rejected: return rejected(submission);
    case ReviewStatus::Kind::expired: return expired();
    case ReviewStatus::Kind::reviewPending: return inReview("A person is checking it");
    case ReviewStatus::Kind::analyzing: break;
    }
    return inReview("Checking your chat");
}

} // namespace

ScreenText doneText(const UploadOutcome& outcome)
{
    ScreenText text = textOf(outcome.submission, rewardText(outcome.nimbrel));
    if (outcome.submission.status.is(ReviewStatus::Kind::approved))
        std::ranges::copy(questLines(outcome), std::back_inserter(text.lead));
    text.primary = "Back to your chat";
    text.caption = rewardHeading;
    return text;
}

RewardStatus rewardStatus(const ReviewStatus& review)
{
    switch (review.kind()) {
    case ReviewStatus::Kind::approved: return {RewardStanding::paid, "Paid"};
    case ReviewStatus::Kind::rejected: return {RewardStanding::refused, notAccepted};
    case ReviewStatus::Kind::expired: return {RewardStanding::stopped, "Stopped"};
    case ReviewStatus::Kind::reviewPending: return {RewardStanding::personChecking, "A person is checking"};
    case ReviewStatus::Kind::analyzing: break;
    }
    return {RewardStanding::checking, "Checking"};
}

std::string reviewLine(const SubmissionStatus& submission, const std::string& questReward)
{
    const ScreenText text = textOf(submission, questReward);
    switch (submission.status.kind()) {
    case ReviewStatus::Kind::approved: return sentences(text) + " " + text.lead.front();
    case ReviewStatus::Kind::rejected: return "Not accepted this time. " + text.status.text;
    case ReviewStatus::Kind::expired: return text.title + ". " + text.status.text;
    default: return sentences(text);
    }
}

std::vector<std::string> questLines(const UploadOutcome& outcome)
{
    std::vector<std::string> lines;
    const auto& next = outcome.availability;
    if (const auto* cooldown = next ? std::get_if<QuestAvailability::Cooldown>(&next->state()) : nullptr)
        lines.push_back("Upload again on " + dayText(cooldown->until) + " with your newer chats.");
    return lines;
}

std::string longReviewText()
{
    return std::string("The review takes longer. ") + elsewhere;
}

OutcomeNotice outcomeNotice(const UploadOutcome& outcome)
{
    const ScreenText text = doneText(outcome);
    if (!text.status.text.empty()) return {text.title, text.status.text};
    std::string body = text.subtitle + ".";
    for (const std::string& sentence : text.lead) body += " " + sentence;
    return {text.title, body};
}

} // namespace vorn
