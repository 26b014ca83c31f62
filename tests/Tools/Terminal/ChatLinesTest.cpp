#include "Tools/Terminal/ChatLines.h"

#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/LinkText.h"
#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>

#include <chrono>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

ExportedMessage message(const std::string& text, bool fromMe = false)
{
    ExportedMessage result;
    result.text = text;
    result.fromMe = fromMe;
    return result;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const auto& line : lines) {
        const auto begin = line.find_first_not_of(' ');
        if (begin != std::string::npos) text += (text.empty() ? "" : " ") + line.substr(begin);
    }
    return text;
}

TEST(ConsentLines, AreTheTextToWhichTheUserAgrees)
{
    EXPECT_EQ(
        joined(consentLines(consentFor("$12.50"))),
        "Your Nimbrel chat: exactly what we upload What Vorn reads Your one-to-one conversation with Nimbrel: the "
        "text of each message, when it was sent, and who sent it. Links in those messages, and the type of any "
        "attachment (\"a photo\"), never the file itself. What Vorn never reads Any other conversation, group "
        "chats (even ones Nimbrel is in), contacts, photos or files. What happens next Your chat is pseudonymized "
        "and added to a dataset that trains AI assistants. You earn $12.50 when it's accepted.");
    for (const auto& line : consentLines(consentFor("the quest reward"))) EXPECT_LE(line.size(), 80U) << line;
}

TEST(ConsentLines, AreWrapped)
{
    EXPECT_THAT(consentLines(consentFor("$12.50")),
                ElementsAre("Your Nimbrel chat: exactly what we upload", "", "What Vorn reads",
                            "  Your one-to-one conversation with Nimbrel: the text of each message, when it",
                            "  was sent, and who sent it.",
                            "  Links in those messages, and the type of any attachment (\"a photo\"), never the",
                            "  file itself.", "What Vorn never reads",
                            "  Any other conversation, group chats (even ones Nimbrel is in), contacts,",
                            "  photos or files.", "What happens next",
                            "  Your chat is pseudonymized and added to a dataset that trains AI assistants.",
                            "  You earn $12.50 when it's accepted.", ""));
}

TEST(InstructionLines, SayWhatToDoWhereATerminalRunsTheProgram)
{
    EXPECT_THAT(instructionLines(accessTextForTerminal()),
                ElementsAre("Allow Full Disk Access, so Vorn can read Messages",
                            "  macOS keeps your Messages history behind Full Disk Access. Vorn opens a",
                            "  private copy, reads only your Nimbrel conversation, and deletes the copy right",
                            "  after.", "  1. Open System Settings → Privacy & Security → Full Disk Access.",
                            "  2. Turn on the terminal in which this runs. Not in the list? Click +.",
                            "  3. If macOS asks to quit and reopen it, do so and run this again."));
    EXPECT_THAT(instructionLines(linkTextForTerminal()),
                ElementsAre("Link your phone: scan with the Vorn app", "  1. Open Vorn on your iPhone.",
                            "  2. Open the Nimbrel chat quest and tap Link a Mac.",
                            "  3. Point your camera at the code, then confirm on your phone."));
}

TEST(StatisticsLines, CountTheChat)
{
    const testing::ScopedEnvironment zone("TZ", "UTC");
    const testing::ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    NimbrelExportStats stats({}, MessageList{});
    EXPECT_THAT(statisticsLines(stats),
                ElementsAre("  Messages         0", "  Your messages    0", "  Nimbrel replies  0"));
    stats.messageCount = 12'345;
    stats.firstAt = std::chrono::sys_days(std::chrono::year(2025) / 12 / 31);
    EXPECT_THAT(statisticsLines(stats), SizeIs(3)); // no row of dates without both
    stats.lastAt = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1);
    EXPECT_EQ(statisticsLines(stats).front(), "  Messages         12,345");
    EXPECT_EQ(statisticsLines(stats).back(), "  Dates            Dec 31, 2025 – Mar 1, 2026");
}

TEST(PreviewLines, ShowTheLastSixMessages)
{
    MessageList messages;
    for (int number = 1; number <= 40; ++number) messages.push_back(message(std::to_string(number), number % 2 == 1));
    EXPECT_THAT(previewLines(messages),
                ElementsAre("  You: 35", "  Nimbrel: 36", "  You: 37", "  Nimbrel: 38", "  You: 39", "  Nimbrel: 40"));
    EXPECT_THAT(previewLines({message("a"), message("b"), message("c")}), SizeIs(3));
    EXPECT_THAT(previewLines({}), SizeIs(0));
}

TEST(PreviewLines, CutAfterOneHundredAndFortyCharacters)
{
    const std::string whole(140, 'x');
    EXPECT_THAT(previewLines({message(whole)}), ElementsAre("  Nimbrel: " + whole));
    EXPECT_THAT(previewLines({message(whole + "y")}), ElementsAre("  Nimbrel: " + whole + "…"));
}

TEST(PreviewLines, NameWhatHasNoText)
{
    ExportedMessage photo = message("");
    photo.attachments.push_back({"image/jpeg"});
    EXPECT_THAT(previewLines({photo, message("")}), ElementsAre("  Nimbrel: Attachment", "  Nimbrel: …"));
}

TEST(PreviewLines, GiveATerminalNoCommands)
{
    EXPECT_THAT(previewLines({message("a\x1B[2J\nb\tc\r\nd")}), ElementsAre("  Nimbrel: a\uFFFD[2J b c d"));
}

} // namespace
} // namespace vorn
