#include "VornMacCore/Wire/WireJSON.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SentRecords, SayWhichMacAsksToBeLinked)
{
    EXPECT_EQ(toJSON(CreateDeviceLinkRequest{"Zoë's Mac", "macos", "1.0.0", "macOS 14.2.1"}),
              R"({"deviceName":"Zoë's Mac","platform":"macos","appVersion":"1.0.0","osVersion":"macOS 14.2.1"})");
}

TEST(SentRecords, LeaveAnAbsentSystemVersionOut)
{
    EXPECT_EQ(toJSON(CreateDeviceLinkRequest{"Mac", "macos", "1.0.0", std::nullopt}),
              R"({"deviceName":"Mac","platform":"macos","appVersion":"1.0.0"})");
}

TEST(SentRecords, ProveWhoPolls)
{
    EXPECT_EQ(toJSON(PollDeviceLinkRequest{"link-1", "secret-1"}), R"({"linkId":"link-1","pollSecret":"secret-1"})");
}

TEST(SentRecords, TradeARefreshToken)
{
    EXPECT_EQ(toJSON(RefreshRequest{"r-1"}), R"({"refreshToken":"r-1"})");
}

TEST(SentRecords, OpenASubmission)
{
    EXPECT_EQ(
        toJSON(CreateSubmissionRequest{"terms-1", 5'000'000'000, 597, DeviceSignals{"Europe/Berlin", "de-DE"}}),
        R"({"termsVersion":"terms-1","sizeBytes":5000000000,"partCount":597,"device":{"timezone":"Europe/Berlin","locale":"de-DE"}})");
}

TEST(SentRecords, LeaveAbsentSignalsOut)
{
    EXPECT_EQ(toJSON(CreateSubmissionRequest{"terms-1", 1, 1, std::nullopt}),
              R"({"termsVersion":"terms-1","sizeBytes":1,"partCount":1})");
}

TEST(SentRecords, AskForMorePartURLs)
{
    EXPECT_EQ(toJSON(PartUrlsRequest{11, 10}), R"({"fromPart":11,"count":10})");
}

TEST(SentRecords, KeepEntityTagsAsTheyCame)
{
    EXPECT_EQ(toJSON(CompleteAssetRequest{{{1, R"("abc")"}, {2, "W/x"}}, "00ff"}),
              R"({"parts":[{"partNumber":1,"etag":"\"abc\""},{"partNumber":2,"etag":"W/x"}],"sha256":"00ff"})");
    EXPECT_EQ(toJSON(CompleteAssetRequest{{}, "00ff"}), R"({"parts":[],"sha256":"00ff"})");
}

TEST(SentRecords, ReadBackAsTheyWere)
{
    const DeviceSignals signals{"Asia/Kolkata", "hi-IN"};
    EXPECT_EQ(fromJSON<DeviceSignals>(toJSON(signals)), signals);
}

TEST(SentRecords, RefuseIllFormedText)
{
    EXPECT_THROW(toJSON(CreateDeviceLinkRequest{"Mac \xFF", "macos", "1.0.0", std::nullopt}), UnencodableJSON);
    EXPECT_THROW(toJSON(CreateSubmissionRequest{"t", 1, 1, DeviceSignals{"Europe/Berlin", "\xC0\x80"}}),
                 UnencodableJSON);
    EXPECT_THROW(toJSON(CompleteAssetRequest{{{1, "\xED\xA0\x80"}}, "00"}), UnencodableJSON);
}

} // namespace
} // namespace vorn
