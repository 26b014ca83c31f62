#include "Tools/Terminal/TerminalResults.h"
#include "Tools/Terminal/StateJSON.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace vorn {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

const Instant march = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(9);

NimbrelState questWith(const std::string& status)
{
    NimbrelState state;
    state.quest.id = "quest-1";
    state.quest.status = status;
    state.maxBytes = 1000;
    return state;
}

SubmissionStatus submissionWith(const std::string& status)
{
    SubmissionStatus submission;
    submission.id = "sub-1";
    submission.status = status;
    return submission;
}

TEST(AvailabilityName, IsForPrograms)
{
    EXPECT_EQ(availabilityName({QuestAvailability::Available{}}), "available");
    EXPECT_EQ(availabilityName({QuestAvailability::InReview{}}), "inReview");
    EXPECT_EQ(availabilityName({QuestAvailability::LastRejected{"wrong_provider"}}), "lastRejected");
    EXPECT_EQ(availabilityName({QuestAvailability::Cooldown{march}}), "cooldown");
}

TEST(TerminalResults, TellAboutASubmission)
{
    EXPECT_EQ(textOf(submissionWith("analyzing")), "Submission      sub-1\n"
                                                   "  status        analyzing\n");
}

TEST(TerminalResults, TellAboutTheQuest)
{
    StatusReport report{{"user-1", "Ada"}, questWith("rejected"), march, {}};
    report.nimbrel.quest.title = "Share your chat";
    report.nimbrel.quest.rewardUsd = 12.5;
    report.nimbrel.quest.rejectionReasonKey = "wrong_provider";
    EXPECT_EQ(textOf(report), "Linked as       Ada\n"
                              "Quest           Share your chat\n"
                              "  status        rejected\n"
                              "  next upload   Last time: This upload didn't look like your Nimbrel chat.\n"
                              "  reward        $12.50\n"
                              "  upload limit  1.0 kB\n");
    report.submission = submissionWith("approved");
    EXPECT_THAT(textOf(report),
                HasSubstr("Submission      sub-1\n  status        approved\n  review        You earned"));
    EXPECT_EQ(json::parse(jsonOf(report)), json::parse(R"({
        "user": {"id": "user-1", "displayName": "Ada"},
        "quest": {"id": "quest-1", "title": "Share your chat", "status": "rejected", "availability": "lastRejected",
                  "canUpload": true, "availableAt": null, "rejectionReasonKey": "wrong_provider", "rewardUsd": 12.5,
                  "maxBytes": 1000},
        "submission": {"id": "sub-1", "status": "approved", "rejectionReasonKey": null, "rewardUsd": null}})"));
}

TEST(TerminalResults, KeepForeignTextHarmless)
{
    StatusReport report{{"u\x1B[1m", "Ada\x1B]0;x\x07\u009B2J"}, questWith("a\nLinked as  Eve"), march, {}};
    report.submission = submissionWith("x\x7F\xFF");
    EXPECT_THAT(textOf(report), HasSubstr("Linked as       Ada\uFFFD]0;x\uFFFD\uFFFD2J\n"));
    for (const std::string& text : {textOf(report), jsonOf(report)}) {
        EXPECT_THAT(text, Not(HasSubstr("\x1B")));
        EXPECT_THAT(text, Not(HasSubstr("\u009B")));
        EXPECT_THAT(text, Not(HasSubstr("\x7F")));
        EXPECT_THAT(text, Not(HasSubstr("\nLinked as  Eve")));
    }
}

} // namespace
} // namespace vorn
