#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

NimbrelChat chatWith(std::string handle)
{
    return {1, "guid of " + handle, std::move(handle), "iMessage"};
}

ExportedMessage messageAt(std::int64_t sentAt, bool fromMe)
{
    ExportedMessage message;
    message.sentAt = sentAt;
    message.fromMe = fromMe;
    return message;
}

TEST(NimbrelExportResult, ListsAHandleOfTwoChatsOnce)
{
    const NimbrelExportResult result{
        {chatWith("b@example.org"), chatWith("+15550100"), chatWith("b@example.org")}, {}, {}};
    EXPECT_EQ(result.agentHandles(), (std::vector<std::string>{"b@example.org", "+15550100"}));
}

TEST(NimbrelExportResult, TellsHandlesApartAsTheyAreStored)
{
    const NimbrelExportResult result{{chatWith("a@example.org"), chatWith("A@example.org")}, {}, {}};
    EXPECT_EQ(result.agentHandles(), (std::vector<std::string>{"a@example.org", "A@example.org"}));
}

TEST(NimbrelExportResult, HasNoHandlesWithoutChats)
{
    EXPECT_TRUE(NimbrelExportResult().agentHandles().empty());
}

TEST(NimbrelExportStats, CountsOnlyChatsWhenThereAreNoMessages)
{
    const NimbrelExportResult result{{chatWith("a"), chatWith("b")}, {}, {}};
    const NimbrelExportStats stats = result.stats();
    EXPECT_EQ(stats.chatCount, 2);
    EXPECT_EQ(stats.messageCount, 0);
    EXPECT_EQ(stats.promptCount, 0);
    EXPECT_EQ(stats.replyCount, 0);
    EXPECT_EQ(stats.firstAt, std::nullopt);
    EXPECT_EQ(stats.lastAt, std::nullopt);
}

TEST(NimbrelExportStats, TellsPromptsFromReplies)
{
    const NimbrelExportStats stats({chatWith("a")}, {messageAt(1, true), messageAt(2, false), messageAt(3, false)});
    EXPECT_EQ(stats.messageCount, 3);
    EXPECT_EQ(stats.promptCount, 1);
    EXPECT_EQ(stats.replyCount, 2);
}

TEST(NimbrelExportStats, TakesFirstAndLastByPosition)
{
    const NimbrelExportStats stats({}, {messageAt(-5, true), messageAt(100, true), messageAt(70, true)});
    EXPECT_EQ(stats.firstAt, Instant(-5s));
    EXPECT_EQ(stats.lastAt, Instant(70s));
}

TEST(NimbrelExportStats, TakesTheOnlyMessageAsFirstAndLast)
{
    const NimbrelExportStats stats({}, {messageAt(42, false)});
    EXPECT_EQ(stats.firstAt, Instant(42s));
    EXPECT_EQ(stats.lastAt, stats.firstAt);
}

TEST(NimbrelExportStats, AreCountedOnEachCall)
{
    NimbrelExportResult result;
    EXPECT_EQ(result.stats().messageCount, 0);
    result.messages.push_back(messageAt(1, true));
    EXPECT_EQ(result.stats().messageCount, 1);
}

TEST(SkipTally, IsZeroForAReasonThatNeverCameUp)
{
    const SkipTally tally;
    EXPECT_EQ(tally["reaction"], 0);
    EXPECT_TRUE(tally.counts.empty()) << "asking must not create the reason";
}

TEST(SkipTally, AddsUpByReason)
{
    SkipTally tally;
    tally.add("empty", 2);
    tally.add("system", 1);
    tally.add("empty", 3);
    EXPECT_EQ(tally["empty"], 5);
    EXPECT_EQ(tally["system"], 1);
    EXPECT_EQ(tally.counts.size(), 2U);
}

TEST(SkipTally, CreatesAReasonEvenForNothing)
{
    SkipTally tally;
    tally.add("unsent", 0);
    EXPECT_EQ(tally.counts, (std::map<std::string, std::int64_t, std::less<>>{{"unsent", 0}}));
}

/// Each step changes one field of a default message.
TEST(ExportedMessage, IsComparedFieldByField)
{
    const ExportedMessage base;
    const std::vector<std::pair<const char*, std::function<void(ExportedMessage&)>>> changes{
        {"rowID", [](auto& message) { message.rowID = 1; }},
        {"sentAt", [](auto& message) { message.sentAt = 1; }},
        {"guid", [](auto& message) { message.guid = "g"; }},
        {"chat", [](auto& message) { message.chat = RecordText("c"); }},
        {"text", [](auto& message) { message.text = "t"; }},
        {"service", [](auto& message) { message.service = RecordText(""); }},
        {"replyToGuid", [](auto& message) { message.replyToGuid = ""; }},
        {"links", [](auto& message) { message.links = {{"http://a", {}}}; }},
        {"attachments", [](auto& message) { message.attachments = {{"image/png"}}; }},
        {"fromMe", [](auto& message) { message.fromMe = true; }},
        {"edited", [](auto& message) { message.edited = true; }},
    };
    for (const auto& [field, change] : changes) {
        SCOPED_TRACE(field);
        ExportedMessage changed;
        EXPECT_EQ(changed, base);
        change(changed);
        EXPECT_NE(changed, base);
    }
}

TEST(ExportRecords, TellAnAbsentTextFromAnEmptyOne)
{
    EXPECT_NE((ExportedLink{"http://a", std::nullopt}), (ExportedLink{"http://a", ""}));
    EXPECT_NE((NimbrelChat{1, "g", "h", std::nullopt}), (NimbrelChat{1, "g", "h", ""}));
    EXPECT_EQ((ExportedAttachment{"image/png"}), (ExportedAttachment{"image/png"}));
}

} // namespace
} // namespace vorn
