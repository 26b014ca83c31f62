#include "VornMac/Text/DoneText.h"
#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Instant march = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(13);

SubmissionStatus submissionWith(const std::string& status)
{
    SubmissionStatus submission;
    submission.status = status;
    return submission;
}

UploadOutcome outcome(const std::string& status)
{
    NimbrelState quest;
    quest.quest.rewardUsd = 5;
    return {submissionWith(status), quest, QuestAvailability(QuestAvailability::Cooldown{march})};
}

struct Case {
    const char* status;
    const char* title;
    const char* subtitle;
    StatusText line;
    bool isWaitedFor;
    const char* terminal;
};

const std::vector<Case>& cases()
{
    static const StatusText unaccepted{Tone::warning, "This upload wasn't accepted."};
    static const StatusText unfinished{Tone::warning, "The upload didn't finish. Try again from your chat."};
    static const std::vector<Case> all = {
        {"approved",
         "You earned $5.00",
         "Thanks for your Nimbrel chat",
         {},
         false,
         "You earned $5.00. Thanks for your Nimbrel chat. The reward is in your Vorn balance."},
        {"rejected", "Not accepted", "This time", unaccepted, false,
         "Not accepted this time. This upload wasn't accepted."},
        {"expired", "Upload stopped", "Nothing was sent", unfinished, false,
         "Upload stopped. The upload didn't finish. Try again from your chat."},
        {"review_pending",
         "Upload received",
         "A person is checking it",
         {},
         true,
         "Upload received. A person is checking it."},
        {"analyzing", "Upload received", "Checking your chat", {}, true, "Upload received. Checking your chat."},
        {"from the future", "Upload received", "Checking your chat", {}, true, "Upload received. Checking your chat."},
        {"", "Upload received", "Checking your chat", {}, true, "Upload received. Checking your chat."},
    };
    return all;
}

class DoneText : public ::testing::Test {
    testing::ScopedEnvironment zone_{"TZ", "Pacific/Auckland"};
    testing::ScopedEnvironment language_{"LC_ALL", "en_US.UTF-8"};
};

TEST_F(DoneText, SaysHowAReviewStands)
{
    for (const Case& each : cases()) {
        SCOPED_TRACE(each.status);
        const ScreenText text = doneText(outcome(each.status));
        EXPECT_EQ(text.title, each.title);
        EXPECT_EQ(text.subtitle, each.subtitle);
        EXPECT_EQ(text.status, each.line);
        EXPECT_EQ(text.hints.size(), each.isWaitedFor ? 2U : 0U);
        EXPECT_EQ(text.primary, "Back to your chat");
        EXPECT_EQ(text.caption, "Reward");
        EXPECT_EQ(reviewLine(submissionWith(each.status), "$5.00"), each.terminal);
    }
}

TEST_F(DoneText, SaysHowTheRewardStands)
{
    struct Card {
        const char* status;
        RewardStatus reward;
        bool isFinal;
    };
    const RewardStatus checking{RewardStanding::checking, "Checking"};
    for (const Card& each :
         {Card{"approved", {RewardStanding::paid, "Paid"}, true},
          Card{"rejected", {RewardStanding::refused, "Not accepted"}, true},
          Card{"expired", {RewardStanding::stopped, "Stopped"}, true},
          Card{"review_pending", {RewardStanding::personChecking, "A person is checking"}, false},
          Card{"analyzing", checking, false}, Card{"from the future", checking, false}, Card{"", checking, false}}) {
        SCOPED_TRACE(each.status);
        EXPECT_EQ(rewardStatus(ReviewStatus(each.status)), each.reward);
        EXPECT_EQ(ReviewStatus(each.status).isFinal(), each.isFinal);
    }
}

TEST_F(DoneText, ComfortsWhoWaits)
{
    EXPECT_THAT(doneText(outcome("analyzing")).hints,
                ElementsAre("This usually takes a minute or two.",
                            "You can close this window. The result also shows on the quest in the Vorn app."));
    EXPECT_EQ(longReviewText(), "The review takes longer. The result also shows on the quest in the Vorn app.");
}

TEST_F(DoneText, NamesTheNextUploadOfWhoWasPaid)
{
    EXPECT_THAT(doneText(outcome("approved")).lead, ElementsAre("The reward is in your Vorn balance.",
                                                                "Upload again on Mar 2, 2026 with your newer chats."));
    EXPECT_THAT(doneText({submissionWith("approved"), std::nullopt, std::nullopt}).lead,
                ElementsAre("The reward is in your Vorn balance."));
    EXPECT_THAT(doneText(outcome("rejected")).lead, IsEmpty());
    EXPECT_THAT(questLines({{}, {}, QuestAvailability(QuestAvailability::InReview{})}), IsEmpty());
    EXPECT_THAT(questLines({}), IsEmpty());
}

TEST_F(DoneText, IsANotificationInTheScreensWords)
{
    const OutcomeNotice earned{"You earned $5.00", "Thanks for your Nimbrel chat. The reward is in your Vorn balance. "
                                                   "Upload again on Mar 2, 2026 with your newer chats."};
    EXPECT_EQ(outcomeNotice(outcome("approved")), earned);
    const OutcomeNotice undated{"You earned the quest reward",
                                "Thanks for your Nimbrel chat. The reward is in your Vorn balance."};
    EXPECT_EQ(outcomeNotice({submissionWith("approved"), std::nullopt, std::nullopt}), undated);
    UploadOutcome nothingNew = outcome("rejected");
    nothingNew.submission.rejectionReasonKey = "nothing_new_since_last";
    EXPECT_EQ(outcomeNotice(nothingNew),
              (OutcomeNotice{"Not accepted",
                             "Nothing new since your last upload. Come back after more chats with Nimbrel."}));
    EXPECT_EQ(outcomeNotice(outcome("rejected")), (OutcomeNotice{"Not accepted", "This upload wasn't accepted."}));
    EXPECT_EQ(outcomeNotice(outcome("expired")),
              (OutcomeNotice{"Upload stopped", "The upload didn't finish. Try again from your chat."}));
    EXPECT_STREQ(openVorn, "Open Vorn");
}

TEST_F(DoneText, NamesTheSubmissionsOwnReward)
{
    UploadOutcome approved = outcome("approved");
    approved.submission.rewardUsd = "12.5";
    EXPECT_EQ(doneText(approved).title, "You earned $12.50");
    EXPECT_EQ(doneText({submissionWith("approved"), std::nullopt, std::nullopt}).title, "You earned the quest reward");
}

} // namespace
} // namespace vorn
