#include "VornMacCore/Wire/WireJSON.h"
#include "tests/VornMacCore/Wire/WireAnswers.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn {
namespace {

using namespace std::chrono;
using testing::goodAnswer;

TEST(ReceivedRecords, KeepEveryFieldOfADeviceLink)
{
    const auto link = fromJSON<DeviceLink>(goodAnswer("DeviceLink"));
    EXPECT_EQ(link, (DeviceLink{"link-1", "secret-1", "vorn:link-1", "2026-03-01T09:15:00Z", 2000}));
    EXPECT_EQ(link.expiresAtDate(), Instant(sys_days(2026y / March / 1) + 9h + 15min));
}

TEST(ReceivedRecords, HaveNoExpiryDateWhenItCannotBeRead)
{
    EXPECT_EQ((DeviceLink{"", "", "", "soon", 0}).expiresAtDate(), std::nullopt);
    EXPECT_EQ((DeviceLink{"", "", "", "2026-03-01", 0}).expiresAtDate(), std::nullopt);
}

TEST(ReceivedRecords, KeepTheSessionOfAnApprovedLink)
{
    EXPECT_EQ(fromJSON<DeviceLinkPoll>(goodAnswer("DeviceLinkPoll")),
              (DeviceLinkPoll{DeviceLinkStatus::approved, DesktopSession{"t-1", "r-1", {"u-1", "Zoë"}}}));
}

TEST(ReceivedRecords, HaveNoSessionWhileTheLinkIsOnlyScanned)
{
    const DeviceLinkPoll scanned{DeviceLinkStatus::scanned, std::nullopt};
    EXPECT_EQ(fromJSON<DeviceLinkPoll>(R"({"status":"scanned"})"), scanned);
    EXPECT_EQ(fromJSON<DeviceLinkPoll>(R"({"status":"scanned","session":null})"), scanned);
}

TEST(ReceivedRecords, TakeAnUnknownLinkStatusForExpired)
{
    using enum DeviceLinkStatus;
    for (const auto& [name, status] : std::initializer_list<std::pair<const char*, DeviceLinkStatus>>{
             {"pending", pending},
             {"scanned", scanned},
             {"approved", approved},
             {"rejected", rejected},
             {"expired", expired},
             {"paused", expired},
             {"Approved", expired},
             {"approved ", expired},
             {"", expired},
         }) {
        const std::string text = R"({"status":")" + std::string(name) + R"("})";
        EXPECT_EQ(fromJSON<DeviceLinkPoll>(text).status, status) << name;
    }
}

TEST(ReceivedRecords, KeepBothTokens)
{
    EXPECT_EQ(fromJSON<TokenPair>(goodAnswer("TokenPair")), (TokenPair{"t-2", "r-2"}));
}

TEST(ReceivedRecords, KeepTheStatusOfARevokedSession)
{
    EXPECT_EQ(fromJSON<Revoked>(goodAnswer("Revoked")), (Revoked{"revoked"}));
}

TEST(ReceivedRecords, KeepEveryFieldOfTheQuestsState)
{
    const ExportGuideStep step{"open", "Open", "Open it.", "https://example.com/1.png", "https://example.com/help",
                               "Help"};
    const QuestWire quest{"q-1",
                          "Share your chat",
                          "Earn a reward.",
                          12.5,
                          "approved",
                          "export_too_small",
                          "2026-03-01T09:15:00Z",
                          ExportGuide{"nimbrel", "Nimbrel", std::vector{step}, "mac"}};
    EXPECT_EQ(fromJSON<NimbrelState>(goodAnswer("NimbrelState")),
              (NimbrelState{quest, {"+15550102030", "nimbrel@example.com"}, 536'870'912}));
}

TEST(ReceivedRecords, KeepLimitsBeyondThirtyTwoBits)
{
    const auto maxBytes = [](const std::string& number) {
        return fromJSON<NimbrelState>(R"({"quest":{"id":"q","status":"open"},"handles":[],"maxBytes":)" + number + "}")
            .maxBytes;
    };
    EXPECT_EQ(maxBytes("4294967296"), 4'294'967'296);
    EXPECT_EQ(maxBytes("9007199254740993"), 9'007'199'254'740'993);
    EXPECT_EQ(maxBytes("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
}

TEST(ReceivedRecords, TakeTheQuestsRewardAsANumberOnly)
{
    const auto rewardUsd = [](const std::string& value) {
        return fromJSON<NimbrelState>(R"({"quest":{"id":"q","status":"open","rewardUsd":)" + value +
                                      R"(},"handles":[],"maxBytes":1})")
            .quest.rewardUsd;
    };
    EXPECT_EQ(rewardUsd("12"), 12.0);
    EXPECT_EQ(rewardUsd("12.5"), 12.5);
    EXPECT_EQ(rewardUsd("null"), std::nullopt);
    EXPECT_THROW(rewardUsd(R"("12.5")"), UndecodableJSON);
}

TEST(ReceivedRecords, TakeASubmissionsRewardAsTextOnly)
{
    const auto rewardUsd = [](const std::string& value) {
        return fromJSON<SubmissionStatus>(R"({"id":"s","questId":"q","status":"approved","rewardUsd":)" + value + "}")
            .rewardUsd;
    };
    EXPECT_EQ(rewardUsd(R"("12.5")"), "12.5");
    EXPECT_EQ(rewardUsd("null"), std::nullopt);
    EXPECT_THROW(rewardUsd("12.5"), UndecodableJSON);
}

TEST(ReceivedRecords, KeepEveryPartOfAnUpload)
{
    EXPECT_EQ(fromJSON<SubmissionUpload>(goodAnswer("SubmissionUpload")),
              (SubmissionUpload{"s-1",
                                "q-1",
                                1,
                                {{"a-1", 0, "up-1", {{1, "https://example.com/1"}, {2, "https://example.com/2"}}}},
                                3600}));
    EXPECT_EQ(fromJSON<PartUrls>(goodAnswer("PartUrls")), (PartUrls{"s-1", "a-1", {{3, "https://example.com/3"}}, 60}));
}

TEST(ReceivedRecords, KeepEveryFieldOfASubmission)
{
    EXPECT_EQ(fromJSON<SubmissionStatus>(goodAnswer("SubmissionStatus")),
              (SubmissionStatus{"s-1", "q-1", "approved", "wrong_provider", "12.50", 0}));
}

TEST(ReceivedRecords, CallAReviewOverAtThreeStatusesOnly)
{
    for (const auto& [status, isTerminal] : std::initializer_list<std::pair<const char*, bool>>{
             {"approved", true},
             {"rejected", true},
             {"expired", true},
             {"processing", false},
             {"review_pending", false},
             {"Approved", false},
             {"", false},
         }) {
        EXPECT_EQ((SubmissionStatus{"s", "q", status, {}, {}, {}}).status.isFinal(), isTerminal) << status;
    }
}

TEST(ReceivedRecords, KeepTheServicesWordsAndCode)
{
    EXPECT_EQ(fromJSON<ErrorBody>(goodAnswer("ErrorBody")), (ErrorBody{"Too many tries.", "rate_limited"}));
    EXPECT_EQ(fromJSON<ErrorBody>(R"({"message":"Only words","details":[1,{"code":7}],"status":"500"})"),
              (ErrorBody{"Only words", std::nullopt}));
    EXPECT_EQ(fromJSON<ErrorBody>("{}"), (ErrorBody{}));
}

} // namespace
} // namespace vorn
