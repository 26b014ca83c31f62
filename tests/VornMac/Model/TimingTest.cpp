#include "VornMac/Model/Timing.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

DeviceLink linkWith(std::int64_t pollIntervalMs, const std::string& expiresAt = "2026-03-01T09:15:00Z")
{
    return {"link-1", "secret-canary-1", "vorn://link/qr-canary-1", expiresAt, pollIntervalMs};
}

SubmissionStatus submissionWith(const std::string& status)
{
    SubmissionStatus submission;
    submission.status = status;
    return submission;
}

TEST(Timing, PollsNoMoreOftenThanOnceASecondAndAtLeastOnceADay)
{
    EXPECT_EQ(timing::pollInterval(linkWith(std::numeric_limits<std::int64_t>::min())), 1s);
    EXPECT_EQ(timing::pollInterval(linkWith(0)), 1s);
    EXPECT_EQ(timing::pollInterval(linkWith(250)), 1s);
    EXPECT_EQ(timing::pollInterval(linkWith(3000)), 3s);
    EXPECT_EQ(timing::pollInterval(linkWith(std::numeric_limits<std::int64_t>::max())), 24h);
}

TEST(Timing, GivesACodeFiveSecondsOfGrace)
{
    const Instant arrival = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1);
    EXPECT_EQ(timing::pollDeadline(linkWith(1000), arrival), arrival + 9h + 15min + 5s);
    EXPECT_EQ(timing::pollDeadline(linkWith(1000, "soon"), arrival), arrival + 125s);
}

TEST(Timing, KeepsAnUploadOnItsStepForAsLongAsAsked)
{
    EXPECT_EQ(timing::uploadStaysFor(0ms, 800ms), 800ms);
    EXPECT_EQ(timing::uploadStaysFor(799ms, 800ms), 1ms);
    EXPECT_EQ(timing::uploadStaysFor(800ms, 800ms), std::nullopt);
    EXPECT_EQ(timing::uploadStaysFor(1h, 800ms), std::nullopt);
    EXPECT_EQ(timing::uploadStaysFor(0ms, 0ms), std::nullopt);
}

TEST(Timing, WatchesAReviewForTwentyMinutes)
{
    EXPECT_EQ(timing::nextReviewPoll(submissionWith("analyzing"), 0s), 5s);
    EXPECT_EQ(timing::nextReviewPoll(submissionWith(""), 0s), 5s);
    EXPECT_EQ(timing::nextReviewPoll(submissionWith("review_pending"), 0s), 30s);
    EXPECT_EQ(timing::nextReviewPoll(submissionWith("review_pending"), 1200s - 1ns), 30s);
    EXPECT_EQ(timing::nextReviewPoll(submissionWith("review_pending"), 1200s), std::nullopt);
    EXPECT_EQ(timing::nextReviewPoll(submissionWith("analyzing"), 1200s), std::nullopt);
}

} // namespace
} // namespace vorn
