#include "Tools/Terminal/ChatWords.h"

#include "Platform/Base/PrintableText.h"
#include "VornMac/Text/Preview.h"
#include "VornMac/Text/StatisticsText.h"

#include <algorithm>

#include <fmt/format.h>

namespace vorn {

std::vector<std::string> consentLines(const std::string& reward)
{
    return {
        "Your Nimbrel chat: exactly what we upload",
        "",
        "What Vorn reads",
        "  Your one-to-one conversation with Nimbrel: the text of each message, when it",
        "  was sent, and who sent it.",
        "  Links in those messages, and the type of any attachment (\"a photo\"), never",
        "  the file itself.",
        "What Vorn never reads",
        "  Any other conversation, group chats (even ones Nimbrel is in), contacts, photos",
        "  or files.",
        "What happens next",
        "  Your chat is pseudonymized and added to a dataset that trains AI assistants.",
        "  You earn " + reward + " when it's accepted.",
        "",
    };
}

std::vector<std::string> accessLines()
{
    return {
        "Allow Full Disk Access, so Vorn can read Messages",
        "  macOS keeps your Messages history behind Full Disk Access. Vorn opens a private",
        "  copy, reads only your Nimbrel conversation, and deletes the copy right after.",
        "  1. Open System Settings → Privacy & Security → Full Disk Access.",
        "  2. Turn on the terminal in which this runs. Not in the list? Click +.",
        "  3. If macOS asks to quit and reopen it, do so and run this again.",
    };
}

std::vector<std::string> statisticsLines(const NimbrelExportStats& stats)
{
    const auto row = [](const char* label, const std::string& value) {
        return fmt::format("  {:<17}{}", label, value);
    };
    std::vector<std::string> lines = {
        row("Messages", countText(stats.messageCount)),
        row("Your messages", countText(stats.promptCount)),
        row("Nimbrel replies", countText(stats.replyCount)),
    };
    if (const std::string dates = datesText(stats); !dates.empty()) lines.push_back(row("Dates", dates));
    return lines;
}

std::vector<std::string> previewLines(const MessageList& messages)
{
    std::vector<std::string> lines;
    for (PreviewedMessage& message : previewOf(messages)) {
        std::ranges::replace(message.text, '\n', ' '); // each message has one line here
        lines.push_back((message.fromMe ? "  You: " : "  Nimbrel: ") + printable(message.text));
    }
    return lines;
}

} // namespace vorn
