#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::string_literals;
using testing::MessageRow;
using testing::MessagesFixture;
using testing::MessagesSchema;

constexpr std::int64_t stamp = 700'000'000'000'000'000;

/// One row for each optional column that makes a difference.
void fill(MessagesFixture& fixture, bool attachments)
{
    fixture.assistantChat();
    fixture.message({.text = "plain"s, .date = stamp});
    fixture.message({.text = nullptr, .attributedBody = testing::attributedBody("attributed"), .date = stamp + 1});
    fixture.message({.text = "reaction"s, .date = stamp + 2, .associatedMessageType = std::int64_t{2000}});
    fixture.message({.text = "system"s, .date = stamp + 3, .itemType = std::int64_t{2}});
    fixture.message({.text = "retracted"s, .date = stamp + 4, .dateRetracted = stamp});
    fixture.message({.text = "edited"s, .date = stamp + 5, .dateEdited = stamp});
    fixture.message({.text = "reply"s, .date = stamp + 6, .threadOriginatorGuid = "guid-1"s});
    if (attachments) fixture.attachment(1, nullptr, "public.jpeg"s);
}

class SchemaMatrix : public ::testing::Test {
protected:
    testing::TemporaryFolder home, temporary;
    testing::RefusingFileManager files{temporary.path()};

    NimbrelExportResult exportOf(const MessagesSchema& schema, bool checkpointed = false)
    {
        std::filesystem::remove(home / "chat.db");
        MessagesFixture fixture(home / "chat.db", schema);
        fill(fixture, schema.attachmentTables);
        if (checkpointed) fixture.checkpoint();
        return NimbrelExporter(home / "chat.db", 1, files).export_({MessagesFixture::assistant});
    }
};

std::vector<std::string> textsOf(const NimbrelExportResult& result)
{
    std::vector<std::string> texts;
    for (const auto& message : result.messages) texts.emplace_back(message.text.view());
    return texts;
}

const std::vector<std::string> usualTexts = {"plain", "attributed", "edited", "reply"};

TEST_F(SchemaMatrix, ReadsTheSameFromEveryFormOfACompleteSchema)
{
    const NimbrelExportResult usual = exportOf({});
    EXPECT_EQ(textsOf(usual), usualTexts);
    EXPECT_EQ(usual.skipped.counts, (decltype(SkipTally::counts){{"reaction", 1}, {"system", 1}, {"unsent", 1}}));
    EXPECT_EQ(usual.messages[0].attachments, std::vector{ExportedAttachment{"image/jpeg"}});
    EXPECT_TRUE(usual.messages[2].edited);
    EXPECT_EQ(usual.messages[3].replyToGuid, "guid-1");
    EXPECT_EQ(exportOf({.shuffled = true}), usual);
    EXPECT_EQ(exportOf({.extraColumns = true}), usual);
    EXPECT_EQ(exportOf({.upperCase = true}), usual);
    EXPECT_EQ(exportOf({.indexes = false}), usual);
    EXPECT_EQ(exportOf({.shuffled = true, .extraColumns = true, .upperCase = true, .indexes = false}), usual);
    EXPECT_EQ(exportOf({}, true), usual) << "after a checkpoint";
}

TEST_F(SchemaMatrix, ReadsEachMissingColumnAsItsDefault)
{
    const NimbrelExportResult usual = exportOf({});
    const auto without = [this](const char* column) { return exportOf({.without = {column}}); };

    EXPECT_EQ(textsOf(without("message.attributedBody")), (std::vector<std::string>{"plain", "edited", "reply"}));
    EXPECT_FALSE(without("message.service").messages[0].service);
    EXPECT_EQ(textsOf(without("message.associated_message_type")),
              (std::vector<std::string>{"plain", "attributed", "reaction", "edited", "reply"}));
    EXPECT_EQ(textsOf(without("message.item_type")),
              (std::vector<std::string>{"plain", "attributed", "system", "edited", "reply"}));
    EXPECT_EQ(textsOf(without("message.date_retracted")),
              (std::vector<std::string>{"plain", "attributed", "retracted", "edited", "reply"}));
    EXPECT_FALSE(without("message.date_edited").messages[2].edited);
    EXPECT_EQ(without("message.thread_originator_guid").messages[3].replyToGuid, std::nullopt);
    EXPECT_EQ(without("chat.service_name").chats[0].service, std::nullopt);
    EXPECT_EQ(without("chat.service_name").messages, usual.messages);
    EXPECT_EQ(without("attachment.mime_type"), usual);
    EXPECT_EQ(without("attachment.uti").messages[0].attachments[0].mimeType, "application/octet-stream");
}

TEST_F(SchemaMatrix, ReadsWithoutAllOptionalColumnsTogether)
{
    const NimbrelExportResult result = exportOf(
        {.without = {"message.attributedBody", "message.service", "message.associated_message_type",
                     "message.item_type", "message.date_retracted", "message.date_edited",
                     "message.thread_originator_guid", "chat.service_name", "attachment.mime_type", "attachment.uti"}});
    EXPECT_EQ(textsOf(result),
              (std::vector<std::string>{"plain", "reaction", "system", "retracted", "edited", "reply"}));
    EXPECT_EQ(result.skipped["empty"], 1); // the body that was only an attributed one
}

TEST_F(SchemaMatrix, ReadsWithoutAttachmentTables)
{
    const NimbrelExportResult result = exportOf({.attachmentTables = false});
    EXPECT_EQ(textsOf(result), usualTexts);
    for (const auto& message : result.messages) EXPECT_TRUE(message.attachments.empty());
}

} // namespace
} // namespace vorn
