#include "Tools/Terminal/EverythingLines.h"

#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "Platform/Base/Bytes.h"
#include "Platform/Base/PrintableText.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"
#include "tests/support/PrivateTemporaryFolder.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class EverythingLines : public ::testing::Test {
protected:
    EverythingLines()
    {
        found_.chats = {{1, "guid-1", "+15550102030", {}}};
        add("Hello\n\nthere", 1'772'356'500);
        add("Same day", 1'772'356'560).fromMe = true;
        ExportedMessage& last = add("", 1'772'442'900);
        last.service = RecordText("SMS");
        last.edited = true;
        last.links = {{"https://one.example/", {}}};
        last.attachments = {{"image/jpeg"}, {"text/plain"}};
    }

    ExportedMessage& add(const std::string& text, std::int64_t sentAt)
    {
        found_.messages.push_back({});
        found_.messages.back().text = text;
        found_.messages.back().sentAt = sentAt;
        return found_.messages.back();
    }
    std::string everything() const
    {
        std::string text;
        listEverything(found_, found_.stats(), [&text](std::string_view part) {
            text += part;
            return true;
        });
        return text;
    }

    testing::ScopedEnvironment language_{"LC_ALL", "en_GB.UTF-8"};
    testing::ScopedEnvironment zone_{"TZ", "UTC"};
    NimbrelExportResult found_;
};

TEST_F(EverythingLines, TellTheChatInNumbersThenEveryMessage)
{
    found_.skipped.add("reaction", 12);
    EXPECT_EQ(everything(), R"(Everything we upload
  Messages         3
  Your messages    1
  Nimbrel replies  2
  Dates            1 Mar 2026 – 2 Mar 2026
Left out
  Reactions        12     Hearts, thumbs and other tapbacks.
  The files of attachments are never read.
Also in the archive
  For each message: its identifier in Messages, its chat's and, in a reply, that of the original message.
  Nimbrel's addresses (+15550102030), these counts, the time of the export, and the versions of Vorn and macOS.

1 Mar 2026

Nimbrel · 09:15:00
  Hello

  there

You · 09:16:00
  Same day

2 Mar 2026

Nimbrel · 09:15:00 · SMS · Edited
  → https://one.example/
  → Photo (image/jpeg)
  → File (text/plain)
)");
}

TEST_F(EverythingLines, KeepCommandsFromTheTerminal)
{
    add("a\x1B[2Jb\r\nc\u202E", 1'772'442'900).service = RecordText("\x1B[5m");
    const std::string text = everything();
    EXPECT_THAT(text, HasSubstr("  a\uFFFD[2Jb\n  c\uFFFD\n"));
    EXPECT_THAT(text, HasSubstr(" · \uFFFD[5m\n"));
    EXPECT_THAT(text, Not(HasSubstr("\x1B")));
}

TEST_F(EverythingLines, TellAnEndlessTextWhole)
{
    add(std::string(30'000, 'x'), 1'772'442'900);
    EXPECT_THAT(everything(), HasSubstr("  " + std::string(30'000, 'x') + "\n"));
}

TEST_F(EverythingLines, TellOnlyWhatASearchFinds)
{
    std::string text;
    const auto sink = [&text](std::string_view part) {
        text += part;
        return true;
    };
    EXPECT_EQ(listFound(found_, "SAME", sink), 1U);
    EXPECT_EQ(text, "\n1 Mar 2026\n\nYou · 09:16:00\n  Same day\n");
    EXPECT_EQ(listFound(found_, "ferry", sink), 0U);
}

TEST_F(EverythingLines, EndWhereNobodyReadsAnyMore)
{
    int parts = 0;
    const auto sink = [&parts](std::string_view) { return ++parts < 2; };
    listEverything(found_, found_.stats(), sink);
    EXPECT_EQ(parts, 2);
    parts = 1;
    EXPECT_EQ(listFound(found_, "", sink), 1U);
}

TEST_F(EverythingLines, AreTheArchivesDocumentsMessageByMessage)
{
    const testing::TemporaryFolder folder;
    const testing::PrivateTemporaryFolder temporary;
    const auto history = writeSampleHistory(folder / "chat.db", {.messages = 2'000});
    const NimbrelExportResult found = NimbrelExporter(folder / "chat.db", 1).export_(history.handles);
    std::vector<std::string> parts;
    listEverything(found, found.stats(), [&parts](std::string_view part) {
        parts.emplace_back(part);
        return true;
    });
    const auto messages = nlohmann::json::parse(textOf(NimbrelArchiveBuilder::messagesJSON(found)));
    ASSERT_EQ(parts.size(), messages.size() + 1) << "the head comes first";
    for (std::size_t place = 0; place < messages.size(); ++place) {
        const auto& message = messages[place];
        SCOPED_TRACE(message.dump());
        std::string expected = message.at("fromMe").get<bool>() ? "You · " : "Nimbrel · ";
        expected +=
            internetDateTime(Instant(std::chrono::seconds(message.at("sentAt").get<std::int64_t>()))).substr(11, 8);
        EXPECT_THAT(parts[place + 1], HasSubstr("\n" + expected));
        std::istringstream text(message.at("text").get<std::string>());
        for (std::string line; std::getline(text, line);)
            EXPECT_THAT(parts[place + 1], HasSubstr((line.empty() ? "" : "  ") + printableWhole(line) + "\n"));
        for (const auto& link : message.at("links"))
            EXPECT_THAT(parts[place + 1], HasSubstr("  → " + link.at("url").get<std::string>() + "\n"));
        for (const auto& attachment : message.at("attachments"))
            EXPECT_THAT(parts[place + 1], HasSubstr(" (" + attachment.at("mimeType").get<std::string>() + ")\n"));
    }
}

} // namespace
} // namespace vorn
