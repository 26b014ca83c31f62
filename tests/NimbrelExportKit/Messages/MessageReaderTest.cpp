#include "NimbrelExportKit/Messages/MessageReader.h"
#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::MessageRow;
using testing::MessagesFixture;
using testing::MessagesSchema;
using ::testing::SizeIs;

constexpr std::int64_t noon = 1'678'307'200; ///< Unix time of the fixture's usual stamp
constexpr std::int64_t stamp = 700'000'000'000'000'000;
constexpr std::int64_t second = 1'000'000'000;

class MessageReaderTest : public ::testing::Test {
protected:
    explicit MessageReaderTest(MessagesSchema schema = {}) : fixture(folder / "chat.db", std::move(schema))
    {
        fixture.assistantChat();
    }

    MessageReader::Output read() const
    {
        const auto chats = NimbrelChatLocator::locate(fixture.database(), {MessagesFixture::assistant});
        return MessageReader::read(chats, fixture.database());
    }
    ExportedMessage only() const
    {
        const auto output = read();
        EXPECT_THAT(output.messages, SizeIs(1));
        EXPECT_THAT(output.skipped.counts, IsEmpty());
        return output.messages.empty() ? ExportedMessage() : output.messages.front();
    }
    /// The reason for which `row`, the database's only message, is left out.
    std::string skipOf(const MessageRow& row)
    {
        fixture.message(row);
        const auto output = read();
        EXPECT_THAT(output.messages, IsEmpty());
        EXPECT_THAT(output.skipped.counts, SizeIs(1));
        return output.skipped.counts.empty() ? "" : output.skipped.counts.begin()->first;
    }

    testing::TemporaryFolder folder;
    MessagesFixture fixture;
};

TEST_F(MessageReaderTest, ReadsNothingWithoutChats)
{
    const SQLiteDatabase withoutTables((folder / "empty.db").string(), SQLiteDatabase::Mode::create);
    EXPECT_EQ(MessageReader::read({}, withoutTables), MessageReader::Output{});
}

TEST_F(MessageReaderTest, ReadsEveryFieldOfAMessage)
{
    fixture.message({.rowID = 7,
                     .guid = "A-1",
                     .text = "  See https://example.com/a \n"s,
                     .isFromMe = std::int64_t{1},
                     .date = stamp + second / 2,
                     .service = "RCS"s,
                     .dateEdited = stamp,
                     .threadOriginatorGuid = "A-0"s});
    fixture.attachment(7, "image/png"s, nullptr);
    const ExportedMessage message = only();
    EXPECT_EQ(message.rowID, 7);
    EXPECT_EQ(message.guid, "A-1");
    EXPECT_EQ(message.chat.view(), "iMessage;-;+15550102030");
    EXPECT_TRUE(message.fromMe);
    EXPECT_EQ(message.sentAt, noon);
    EXPECT_EQ(message.text, "See https://example.com/a");
    EXPECT_EQ(message.service, RecordText("RCS"));
    EXPECT_TRUE(message.edited);
    EXPECT_EQ(message.replyToGuid, "A-0");
    EXPECT_THAT(message.links, ElementsAre(ExportedLink{"https://example.com/a", std::nullopt}));
    EXPECT_THAT(message.attachments, ElementsAre(ExportedAttachment{"image/png"}));
}

TEST_F(MessageReaderTest, LeavesAbsentValuesAbsent)
{
    fixture.message({.isFromMe = nullptr, .service = nullptr, .dateEdited = nullptr});
    const ExportedMessage message = only();
    EXPECT_FALSE(message.fromMe);
    EXPECT_FALSE(message.service);
    EXPECT_FALSE(message.edited);
    EXPECT_EQ(message.replyToGuid, std::nullopt);
}

TEST_F(MessageReaderTest, DecodesTheAttributedBodyWhenThereIsNoText)
{
    fixture.message({.text = nullptr, .attributedBody = testing::attributedBody(" \uFFFC Decoded ")});
    EXPECT_EQ(only().text, "Decoded");
}

TEST_F(MessageReaderTest, DecodesTheAttributedBodyWhenTheTextIsEmptyOnceCleaned)
{
    fixture.message({.text = "\uFFFC \uFFFC\n"s, .attributedBody = testing::attributedBody("Decoded")});
    EXPECT_EQ(only().text, "Decoded");
}

TEST_F(MessageReaderTest, PrefersTheText)
{
    fixture.message({.text = "Text"s, .attributedBody = testing::attributedBody("Decoded")});
    EXPECT_EQ(only().text, "Text");
}

TEST_F(MessageReaderTest, KeepsAPlaceholderOfAnAttachmentWithAnEmptyText)
{
    const auto row = fixture.message({.text = " \uFFFC "s});
    fixture.attachment(row, "image/jpeg"s, nullptr);
    const ExportedMessage message = only();
    EXPECT_EQ(message.text, "");
    EXPECT_THAT(message.attachments, SizeIs(1));
}

TEST_F(MessageReaderTest, TalliesAPlaceholderWithoutAttachmentAsEmpty)
{
    EXPECT_EQ(skipOf({.text = " \uFFFC "s}), "empty");
}

TEST_F(MessageReaderTest, TalliesAnAttributedBodyThatCannotBeDecodedAsEmpty)
{
    EXPECT_EQ(skipOf({.text = nullptr, .attributedBody = ByteBuffer(20, std::byte{0x84})}), "empty");
}

TEST_F(MessageReaderTest, TalliesAnEmptyAttributedBodyAsEmpty)
{
    EXPECT_EQ(skipOf({.text = nullptr, .attributedBody = ByteBuffer()}), "empty");
}

TEST_F(MessageReaderTest, TalliesTapbacksEvenWithText)
{
    EXPECT_EQ(skipOf({.associatedMessageType = std::int64_t{2000}}), "reaction");
}

TEST_F(MessageReaderTest, TalliesSystemRows)
{
    EXPECT_EQ(skipOf({.itemType = std::int64_t{3}}), "system");
}

TEST_F(MessageReaderTest, TalliesAReactionBeforeASystemRow)
{
    EXPECT_EQ(skipOf({.associatedMessageType = std::int64_t{3000}, .itemType = std::int64_t{3}}), "reaction");
}

TEST_F(MessageReaderTest, TalliesRetractedRowsAsUnsent)
{
    EXPECT_EQ(skipOf({.dateRetracted = stamp}), "unsent");
}

TEST_F(MessageReaderTest, TalliesAnEditedRowWithoutBodyAsUnsent)
{
    const MessageRow row{.text = nullptr, .dateEdited = stamp};
    fixture.attachment(fixture.message(row), "image/jpeg"s, nullptr); // an attachment does not save it
    const auto output = read();
    EXPECT_THAT(output.messages, IsEmpty());
    EXPECT_EQ(output.skipped["unsent"], 1);
}

TEST_F(MessageReaderTest, KeepsAnEditedRowWithABody)
{
    fixture.message({.dateEdited = stamp});
    EXPECT_TRUE(only().edited);
}

TEST_F(MessageReaderTest, TakesANegativeRetractionForNone)
{
    fixture.message({.dateRetracted = std::int64_t{-1}});
    EXPECT_EQ(only().text, "Hello");
}

TEST_F(MessageReaderTest, TalliesUndatedRowsBeforeTheFirstKeptOne)
{
    fixture.message({.date = std::int64_t{0}});
    fixture.message({.date = nullptr});
    fixture.message({.date = stamp});
    const auto output = read();
    EXPECT_THAT(output.messages, SizeIs(1));
    EXPECT_EQ(output.skipped["undated"], 2);
}

TEST_F(MessageReaderTest, DatesAnUndatedRowAtTheLatestTimeKept)
{
    // Stamps before 2001 sort before those of undated rows.
    fixture.message({.text = "kept"s, .date = std::int64_t{-1000}});
    fixture.message({.text = "undated"s, .date = std::int64_t{0}});
    fixture.message({.text = "later"s, .date = stamp});
    const auto output = read();
    ASSERT_THAT(output.messages, SizeIs(3));
    EXPECT_EQ(output.messages[0].sentAt, 978'306'200);
    EXPECT_EQ(output.messages[1].text, "undated");
    EXPECT_EQ(output.messages[1].sentAt, 978'306'200);
    EXPECT_THAT(output.skipped.counts, IsEmpty());
}

TEST_F(MessageReaderTest, DropsTalliedRowsWithoutDatingUndatedOnesByThem)
{
    fixture.message({.date = std::int64_t{-1000}, .itemType = std::int64_t{1}});
    fixture.message({.date = std::int64_t{0}});
    const auto output = read();
    EXPECT_EQ(output.skipped["system"], 1);
    EXPECT_EQ(output.skipped["undated"], 1);
}

TEST_F(MessageReaderTest, RoundsTimesDownAlsoBefore1970)
{
    fixture.message({.date = std::int64_t{-978'307'200} * second - second / 2});
    EXPECT_EQ(only().sentAt, -1);
}

TEST_F(MessageReaderTest, OrdersMessagesOfOneSecondByRow)
{
    fixture.message({.rowID = 5, .text = "five"s, .date = stamp + 1000});
    fixture.message({.rowID = 3, .text = "three"s, .date = stamp + 900'000'000});
    fixture.message({.rowID = 9, .text = "nine"s, .date = stamp});
    std::vector<std::int64_t> rows;
    for (const auto& message : read().messages) rows.push_back(message.rowID);
    EXPECT_THAT(rows, ElementsAre(3, 5, 9));
}

TEST_F(MessageReaderTest, OrdersSecondsAndNanosecondsByTime)
{
    fixture.message({.text = "new"s, .date = stamp});
    fixture.message({.text = "old"s, .date = std::int64_t{600'000'000}});
    fixture.message({.text = "newest"s, .date = std::int64_t{800'000'000}});
    std::vector<std::string> texts;
    for (const auto& message : read().messages) texts.emplace_back(message.text.view());
    EXPECT_THAT(texts, ElementsAre("old", "new", "newest"));
}

TEST_F(MessageReaderTest, KeepsEachWebLinkOnceAndNoOthers)
{
    fixture.message(
        {.text = "https://example.com/x mailto:me@example.com https://example.com/x http://example.org ftp://a.com"s});
    EXPECT_THAT(only().links, ElementsAre(ExportedLink{"https://example.com/x", std::nullopt},
                                          ExportedLink{"http://example.org", std::nullopt}));
}

TEST_F(MessageReaderTest, FindsTheSameLinkInTheNextMessageAgain)
{
    fixture.message({.text = "https://example.com"s});
    fixture.message({.text = "https://example.com"s});
    for (const auto& message : read().messages) EXPECT_THAT(message.links, SizeIs(1));
}

TEST_F(MessageReaderTest, ChoosesTheTypeOfAnAttachment)
{
    const auto row = fixture.message();
    fixture.attachment(row, nullptr, "public.jpeg"s);
    fixture.attachment(row, ""s, "com.compuserve.gif"s);
    fixture.attachment(row, "video/mp4"s, "public.jpeg"s);
    fixture.attachment(row, nullptr, nullptr);
    fixture.attachment(row, ""s, "com.apple.coreaudio-format"s); // a voice memo
    fixture.attachment(row, nullptr, "com.example.unheard-of"s);
    EXPECT_THAT(only().attachments,
                ElementsAre(ExportedAttachment{"image/jpeg"}, ExportedAttachment{"image/gif"},
                            ExportedAttachment{"video/mp4"}, ExportedAttachment{"application/octet-stream"},
                            ExportedAttachment{"application/octet-stream"},
                            ExportedAttachment{"application/octet-stream"}));
}

TEST_F(MessageReaderTest, DropsRowsWithoutGuidSilently)
{
    fixture.insert("message", {{"ROWID", std::int64_t{50}}, {"guid", nullptr}, {"text", "lost"s}, {"date", stamp}});
    fixture.insert("chat_message_join", {{"chat_id", std::int64_t{1}}, {"message_id", std::int64_t{50}}});
    const auto output = read();
    EXPECT_THAT(output.messages, IsEmpty());
    EXPECT_THAT(output.skipped.counts, IsEmpty());
}

TEST_F(MessageReaderTest, LeavesOtherConversationsAlone)
{
    fixture.handle(2, "friend@example.com"s);
    fixture.chat(2, "iMessage;-;friend@example.com"s, {2});
    fixture.message({.text = "mine"s});
    const auto other = fixture.message({.text = "not yours"s, .chats = {2}});
    fixture.attachment(other, "image/jpeg"s, nullptr);
    EXPECT_EQ(only().text, "mine");
}

TEST_F(MessageReaderTest, YieldsAMessageOfTwoChatsTwice)
{
    fixture.handle(2, MessagesFixture::assistant, "SMS");
    fixture.chat(2, "SMS;-;+15550102030"s, {2});
    const auto row = fixture.message({.chats = {1, 2}});
    fixture.attachment(row, "image/png"s, nullptr);
    const auto output = read();
    ASSERT_THAT(output.messages, SizeIs(2));
    EXPECT_THAT(output.messages[0].attachments, SizeIs(2)); // the join yields the attachment once for each chat
    EXPECT_EQ(output.messages[0].attachments, output.messages[1].attachments);
    EXPECT_NE(output.messages[0].chat, output.messages[1].chat);
}

TEST_F(MessageReaderTest, RepairsIllFormedTextAndEndsItAtANul)
{
    fixture.message({.text = "bad \xFF\xFE"s});
    fixture.database().run("UPDATE message SET guid = CAST(x'4100FF' AS TEXT)", {});
    const ExportedMessage message = only();
    EXPECT_EQ(message.text, "bad \uFFFD\uFFFD");
    EXPECT_EQ(message.guid, "A");
}

TEST_F(MessageReaderTest, KeepsNulsOfAttributedBodies)
{
    fixture.message({.text = nullptr, .attributedBody = testing::attributedBody("a\0b"s)});
    EXPECT_EQ(only().text, "a\0b"s);
}

TEST_F(MessageReaderTest, ReadsNumbersAndTextOfOtherTypesAsSQLiteConvertsThem)
{
    fixture.message({.text = std::int64_t{42}, .isFromMe = "1"s, .date = "700000000"s, .service = std::int64_t{5}});
    const ExportedMessage message = only();
    EXPECT_EQ(message.text, "42");
    EXPECT_TRUE(message.fromMe);
    EXPECT_EQ(message.sentAt, noon);
    EXPECT_EQ(message.service, RecordText("5"));
}

TEST_F(MessageReaderTest, TellsHowManyRowsItHasRead)
{
    fixture.database().execute("BEGIN");
    for (int i = 0; i < 9000; ++i) fixture.message();
    fixture.database().execute("COMMIT");
    const auto chats = NimbrelChatLocator::locate(fixture.database(), {MessagesFixture::assistant});
    std::vector<std::int64_t> told;
    MessageReader::read(chats, fixture.database(), [&](std::int64_t rows) { told.push_back(rows); });
    EXPECT_THAT(told, ElementsAre(4096, 8192));
    EXPECT_THROW(MessageReader::read(chats, fixture.database(), [](std::int64_t) { throw std::out_of_range("stop"); }),
                 std::out_of_range);
}

TEST_F(MessageReaderTest, StopsInsideOfAMessageThatIsFullOfLinks)
{
    fixture.message({.text = "a.com, b.com"s});
    const auto chats = NimbrelChatLocator::locate(fixture.database(), {MessagesFixture::assistant});
    CancelFlag cancel;
    cancel.cancel();
    EXPECT_THROW(MessageReader::read(chats, fixture.database(), {}, cancel), Cancelled);
}

class WithoutReplies : public MessageReaderTest {
protected:
    WithoutReplies() : MessageReaderTest({.without = {"message.thread_originator_guid"}}) {}
};

TEST_F(WithoutReplies, NoMessageRepliesToAnother)
{
    fixture.message({.threadOriginatorGuid = "A-0"s});
    EXPECT_EQ(only().replyToGuid, std::nullopt);
}

class WithoutReactions : public MessageReaderTest {
protected:
    WithoutReactions() : MessageReaderTest({.without = {"message.associated_message_type"}}) {}
};

TEST_F(WithoutReactions, NoRowIsTalliedAsReaction)
{
    fixture.message({.associatedMessageType = std::int64_t{2000}});
    EXPECT_EQ(only().text, "Hello");
}

} // namespace
} // namespace vorn
