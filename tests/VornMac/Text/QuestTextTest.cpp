#include "VornMac/Text/QuestText.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

const Instant march = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(13);

TEST(AvailabilityNote, TellsHowTheLastUploadEnded)
{
    const testing::ScopedEnvironment zone("TZ", "Pacific/Auckland");
    const testing::ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    using Q = QuestAvailability;
    EXPECT_EQ(availabilityNote({Q::Cooldown{march}}),
              (StatusText{Tone::good, "Paid. You can upload again on Mar 2, 2026."}));
    EXPECT_EQ(availabilityNote({Q::LastRejected{"wrong_provider"}}),
              (StatusText{Tone::warning, "Last time: This upload didn't look like your Nimbrel chat."}));
    EXPECT_EQ(availabilityNote({Q::LastRejected{}}),
              (StatusText{Tone::warning, "Last time: This upload wasn't accepted."}));
    EXPECT_EQ(availabilityNote({Q::InReview{}}), (StatusText{Tone::waiting, "Your last upload is being checked."}));
    EXPECT_EQ(availabilityLine({Q::InReview{}}), "Your last upload is being checked.");
}

TEST(AvailabilityNote, IsSilentWhereTheUserMaySimplyUpload)
{
    EXPECT_EQ(availabilityNote({QuestAvailability::Available{}}), StatusText{});
    EXPECT_EQ(availabilityLine({QuestAvailability::Available{}}), "You can upload your chat."); // a terminal says so
}

TEST(EarnedText, IsTheSubmissionsOwnAmountWhereItHasOne)
{
    SubmissionStatus submission;
    EXPECT_EQ(earnedText(submission, "$5.00"), "$5.00");
    submission.rewardUsd = "12.5";
    EXPECT_EQ(earnedText(submission, "$5.00"), "$12.50");
    submission.rewardUsd = "a lot";
    EXPECT_EQ(earnedText(submission, "the quest reward"), "the quest reward");
}

TEST(CountedText, GoesFromNothingToTheAmount)
{
    EXPECT_EQ(countedText("$12.50", 0), "$0.00");
    EXPECT_EQ(countedText("$12.50", 0.5), "$6.25");
    EXPECT_EQ(countedText("$12.50", 0.999), "$12.49");
    EXPECT_EQ(countedText("$12.50", 1), "$12.50");
    EXPECT_EQ(countedText("$1000000.00", 0.5), "$500000.00");
    EXPECT_EQ(countedText("the quest reward", 0.5), "the quest reward");
}

TEST(EarnedText, IsAnAmountOrWords)
{
    EXPECT_TRUE(isAmount("$12.50"));
    EXPECT_FALSE(isAmount("the quest reward"));
}

TEST(RewardText, NamesTheAmountWhereItIsKnown)
{
    EXPECT_EQ(rewardText(std::nullopt), "the quest reward");
    NimbrelState quest;
    EXPECT_EQ(rewardText(quest), "the quest reward");
    quest.quest.rewardUsd = 12.5;
    EXPECT_EQ(rewardText(quest), "$12.50");
}

TEST(RejectionText, GivesTheReason)
{
    SubmissionStatus submission;
    EXPECT_EQ(rejectionText(submission), "This upload wasn't accepted.");
    submission.rejectionReasonKey = "authenticity_suspected";
    EXPECT_EQ(rejectionText(submission), "The upload didn't arrive intact. Try again.");
}

} // namespace
} // namespace vorn
