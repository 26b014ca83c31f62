#include "Tools/Terminal/ChatWords.h"

#include "Platform/Base/Dates.h"
#include "Platform/Base/Text.h"
#include "Tools/Terminal/PrintableText.h"

#include <algorithm>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr std::size_t previewed = 6;
constexpr std::size_t longestPreview = 140; ///< characters

/// The message's text as it is previewed.
std::string excerpt(const ExportedMessage& message)
{
    const std::string_view text = message.text;
    if (text.empty()) return message.attachments.empty() ? "…" : "Attachment";
    std::string first = text::prefixOfCharacters(text, longestPreview);
    if (first.size() < text.size()) first += "…";
    std::ranges::replace(first, '\n', ' '); // each message has one line here
    return first;
}

} // namespace

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
        row("Messages", std::to_string(stats.messageCount)),
        row("Your messages", std::to_string(stats.promptCount)),
        row("Nimbrel replies", std::to_string(stats.replyCount)),
    };
    if (stats.firstAt && stats.lastAt)
        lines.push_back(row("Dates", dayText(*stats.firstAt) + " – " + dayText(*stats.lastAt)));
    return lines;
}

std::vector<std::string> previewLines(const MessageList& messages)
{
    std::vector<std::string> lines;
    for (std::size_t index = messages.size() - std::min(messages.size(), previewed); index < messages.size(); ++index) {
        const ExportedMessage& message = messages[index];
        lines.push_back((message.fromMe ? "  You: " : "  Nimbrel: ") + printable(excerpt(message)));
    }
    return lines;
}

} // namespace vorn
