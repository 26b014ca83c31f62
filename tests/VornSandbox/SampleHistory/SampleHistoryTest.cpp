#include "VornSandbox/SampleHistory/SampleHistory.h"

#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"
#include "tests/support/PrivateTemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

namespace vorn::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Le;

TEST(SampleHistory, EqualSeedsGiveEqualRows)
{
    const WrittenHistory one({.messages = 2'000, .seed = 7});
    const WrittenHistory other({.messages = 2'000, .seed = 7});
    EXPECT_EQ(one.summary(), other.summary());
    const auto right = other.content();
    for (const auto& [column, values] : one.content()) EXPECT_EQ(values, right.at(column)) << column;
    const WrittenHistory third({.messages = 2'000, .seed = 8});
    EXPECT_NE(third.content().at("message.guid"), right.at("message.guid"));
}

/// A history is useful for tests only if an export finds exactly what its summary says.
void expectExportFindsWhatIsPromised(const WrittenHistory& history)
{
    const auto& expected = history.summary().expected;
    const PrivateTemporaryFolder temporary;
    const auto found = NimbrelExporter(history.path(), 1).export_(history.summary().handles);
    const auto stats = found.stats();
    EXPECT_EQ(stats.chatCount,
              std::ranges::count(history.summary().conversations, true, &SampleConversation::exported));
    EXPECT_EQ(stats.messageCount, expected.kept);
    EXPECT_EQ(stats.promptCount, expected.prompts);
    EXPECT_EQ(stats.replyCount, expected.replies);
    SampleExpectation counted;
    for (const ExportedMessage& message : found.messages) {
        counted.edited += message.edited ? 1 : 0;
        counted.threaded += message.replyToGuid ? 1 : 0;
        counted.withLinks += message.links.empty() ? 0 : 1;
        counted.links += static_cast<std::int64_t>(message.links.size());
        counted.withAttachments += message.attachments.empty() ? 0 : 1;
        for (const ExportedAttachment& attachment : message.attachments)
            ++counted.attachmentTypes[std::string(std::string_view(attachment.mimeType))];
        for (const char c : std::string_view(message.text))
            counted.characters += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    }
    EXPECT_EQ(counted.edited, expected.edited);
    EXPECT_EQ(counted.threaded, expected.threaded);
    EXPECT_EQ(counted.withLinks, expected.withLinks);
    EXPECT_EQ(counted.links, expected.links);
    EXPECT_EQ(counted.withAttachments, expected.withAttachments);
    EXPECT_EQ(counted.attachmentTypes, expected.attachmentTypes);
    EXPECT_EQ(counted.characters, expected.characters);
    for (const char* reason : {"reaction", "system", "unsent", "empty", "undated"}) {
        const auto promised = expected.skipped.find(reason);
        EXPECT_EQ(found.skipped[reason], promised == expected.skipped.end() ? 0 : promised->second) << reason;
    }
    ASSERT_FALSE(found.messages.empty());
    EXPECT_EQ(found.messages.front().sentAt, expected.firstAt);
    EXPECT_EQ(found.messages.back().sentAt, expected.lastAt);
}

TEST(SampleHistory, AnExportFindsWhatTheSummaryPromises)
{
    expectExportFindsWhatIsPromised(WrittenHistory({.messages = 12'000, .seed = 3, .inLog = 400}));
}

TEST(SampleHistory, AnExportFindsTheSameUnderOtherHandles)
{
    expectExportFindsWhatIsPromised(
        WrittenHistory({.messages = 1'500, .handles = {"urn:biz:4f2a-77", "+4915555501234"}}));
}

TEST(SampleHistory, AnExportOfTheAssistantAloneReadsOneConversation)
{
    const WrittenHistory history({.messages = 3'000, .onlyAssistant = true});
    expectExportFindsWhatIsPromised(history);
    EXPECT_EQ(history.summary().conversations.size(), 1U);
    EXPECT_EQ(history.summary().expected.rows, 3'000);
}

TEST(SampleHistory, SharesAreNearThoseOfARealHistory)
{
    const WrittenHistory history({.messages = 20'000, .onlyAssistant = true});
    const auto& expected = history.summary().expected;
    const auto share = [&](std::int64_t part) {
        return 100.0 * static_cast<double>(part) / static_cast<double>(expected.kept);
    };
    EXPECT_THAT(share(expected.blobOnly), AllOf(Ge(57), Le(63)));
    EXPECT_THAT(share(expected.withLinks), AllOf(Ge(7), Le(9)));
    EXPECT_THAT(share(expected.characters) / 100, AllOf(Ge(112), Le(128)));
    EXPECT_THAT(share(expected.prompts), AllOf(Ge(42), Le(58)));
    EXPECT_THAT(share(expected.withAttachments), AllOf(Ge(3), Le(5)));
    for (const char* reason : {"reaction", "system", "unsent", "empty", "undated"}) {
        EXPECT_THAT(expected.skipped.at(reason), Ge(10)) << reason;
    }
    for (const auto& [table, rows] :
         {std::pair{"message", history.summary().messages}, std::pair{"attachment", history.summary().attachments}}) {
        EXPECT_EQ(history.number(std::string("SELECT count(*) FROM ") + table), rows) << table;
    }
    const double bytesPerMessage = static_cast<double>(std::filesystem::file_size(history.path())) / 20'000;
    EXPECT_THAT(bytesPerMessage, AllOf(Ge(1'100), Le(1'250)));
}

TEST(SampleHistory, HoldsEveryKindOfRow)
{
    const WrittenHistory history({.messages = 20'000});
    for (const char* condition :
         {"associated_message_type BETWEEN 2000 AND 2006 AND associated_message_guid LIKE 'p:0/%'",
          "associated_message_type BETWEEN 3000 AND 3006",
          "associated_message_emoji IS NOT NULL",
          "item_type != 0 AND group_title IS NOT NULL",
          "date_retracted > 0",
          "date_edited > date AND length(attributedBody) > 250",
          "date = 0",
          "text = ''",
          "text IS NULL AND attributedBody IS NULL",
          "cache_has_attachments = 1 AND text IS NULL",
          "is_audio_message = 1",
          "thread_originator_guid IS NOT NULL",
          "payload_data IS NOT NULL",
          "cache_roomnames IS NOT NULL",
          "service = 'iMessage'",
          "service = 'SMS'",
          "service = 'RCS'",
          "text IS NOT NULL AND attributedBody IS NULL",
          "text LIKE ' %'",
          "instr(text, char(65532)) > 0",
          "instr(attributedBody, CAST('NSMutableString' AS BLOB)) > 0"}) {
        EXPECT_GT(history.number(std::string("SELECT count(*) FROM message WHERE ") + condition), 0) << condition;
    }
    EXPECT_THAT(
        history.texts("SELECT DISTINCT coalesce(uti, 'none') || ' ' || coalesce(mime_type, 'none') FROM attachment"),
        IsSupersetOf({"public.jpeg image/jpeg", "public.heic image/heic", "com.apple.coreaudio-format ",
                      "public.png none", "com.adobe.pdf application/pdf", "none none"}));
}

TEST(SampleHistory, SurroundsTheAssistantWithOthers)
{
    const WrittenHistory history({.messages = 3'000});
    EXPECT_THAT(history.summary().handles, ElementsAre("+14155550137", "nimbrel@example.com"));
    EXPECT_THAT(history.texts("SELECT guid FROM chat WHERE chat_identifier = '+14155550137' ORDER BY ROWID"),
                ElementsAre("any;-;+14155550137", "SMS;-;+14155550137"));
    EXPECT_GT(history.number("SELECT count(*) FROM chat c JOIN chat_handle_join j ON j.chat_id = c.ROWID WHERE style = "
                             "43 AND j.handle_id = 1"),
              1)
        << "groups with the assistant";
    EXPECT_EQ(history.number("SELECT count(*) FROM chat WHERE ROWID NOT IN (SELECT chat_id FROM chat_message_join)"),
              0);
    for (const SampleConversation& conversation : history.summary().conversations) {
        EXPECT_EQ(history.number(
                      "SELECT count(*) FROM chat_message_join j JOIN chat c ON c.ROWID = j.chat_id WHERE c.guid = '" +
                      conversation.guid + "'"),
                  conversation.rows)
            << conversation.guid;
    }
    EXPECT_THAT(static_cast<double>(history.summary().expected.rows) / 3'000, AllOf(Ge(0.44), Le(0.52)));
}

TEST(SampleHistory, RowsBelongTogether)
{
    const WrittenHistory history({.messages = 4'000});
    const auto none = [&](const std::string& sql) {
        EXPECT_EQ(history.number("SELECT count(*) FROM " + sql), 0) << sql;
    };
    none("message WHERE ROWID NOT IN (SELECT message_id FROM chat_message_join)");
    none("message m JOIN chat_message_join j ON j.message_id = m.ROWID WHERE j.message_date != m.date");
    none("message WHERE handle_id != 0 AND handle_id NOT IN (SELECT ROWID FROM handle)");
    none("message m WHERE cache_has_attachments != EXISTS (SELECT 1 FROM message_attachment_join j WHERE j.message_id "
         "= m.ROWID)");
    none("message WHERE thread_originator_guid NOT IN (SELECT guid FROM message)");
    none("message WHERE substr(associated_message_guid, 5) NOT IN (SELECT guid FROM message)");
    none("message WHERE reply_to_guid NOT IN (SELECT guid FROM message)");
    none(
        "(SELECT date, lag(date) OVER (ORDER BY ROWID) AS earlier FROM message WHERE date != 0) WHERE date <= earlier");
    none("message WHERE date / 1000000000 + 978307200 > 1772356500");
}

TEST(SampleHistory, OnlyThisUserMayReadIt)
{
    const WrittenHistory history({.messages = 20, .inLog = 5});
    for (const char* name : {"chat.db", "chat.db-wal"}) {
        struct stat status{};
        ASSERT_EQ(stat((history.folder() / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
    }
}

TEST(SampleHistory, ReplacesAHistoryOnlyWhenTold)
{
    const TemporaryFolder folder;
    SampleHistoryOptions options{.messages = 50, .inLog = 10};
    writeSampleHistory(folder / "chat.db", options);
    options.inLog = 0;
    try {
        writeSampleHistory(folder / "chat.db", options);
        FAIL() << "replaced a file";
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.code(), std::errc::file_exists);
    }
    EXPECT_THAT(folder.names(), ElementsAre("chat.db", "chat.db-wal"));
    options.replaceExisting = true;
    writeSampleHistory(folder / "chat.db", options);
    EXPECT_THAT(folder.names(), ElementsAre("chat.db")) << "the log of the old history went with it";
}

TEST(SampleHistory, LeavesNothingWhenCancelled)
{
    const TemporaryFolder folder;
    CancelFlag flag;
    SampleHistoryOptions options{.messages = 20'000, .cancel = &flag};
    options.progress = [&](std::int64_t written, std::int64_t) {
        if (written > 8'000) flag.cancel();
    };
    EXPECT_THROW(writeSampleHistory(folder / "chat.db", options), Cancelled);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SampleHistory, RefusesOptionsThatMakeNoSense)
{
    const TemporaryFolder folder;
    for (const SampleHistoryOptions& options :
         {SampleHistoryOptions{.messages = -1}, SampleHistoryOptions{.messages = 100'000'001},
          SampleHistoryOptions{.messages = 5, .inLog = 6}, SampleHistoryOptions{.inLog = -1},
          SampleHistoryOptions{.handles = {" "}}, SampleHistoryOptions{.handles = {"a@b.example", "a@b.example"}},
          SampleHistoryOptions{.handles = {"+12125550101"}}}) {
        EXPECT_THROW(writeSampleHistory(folder / "chat.db", options), std::invalid_argument);
        EXPECT_THAT(folder.names(), IsEmpty());
    }
}

TEST(SampleHistory, MayBeEmpty)
{
    const WrittenHistory history({.messages = 0});
    EXPECT_EQ(history.number("SELECT count(*) FROM message"), 0);
    EXPECT_GT(history.number("SELECT count(*) FROM chat"), 0);
    EXPECT_EQ(history.summary().expected.firstAt, std::nullopt);
}

} // namespace
} // namespace vorn::testing
