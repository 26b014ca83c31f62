#include "VornMac/Text/Preview.h"

#include "Platform/Base/Text.h"
#include "VornMac/Text/DrawableText.h"

#include <algorithm>
#include <string_view>

namespace vorn {
namespace {

constexpr std::size_t previewed = 6;
constexpr std::size_t longest = 140; ///< characters

std::string excerpt(const ExportedMessage& message)
{
    const std::string_view text = message.text;
    if (text.empty()) return message.attachments.empty() ? "…" : "Attachment";
    const std::string first = text::prefixOfCharacters(text, longest);
    return drawable(first) + (first.size() < text.size() ? "…" : "");
}

} // namespace

std::vector<PreviewedMessage> previewOf(const MessageList& messages)
{
    std::vector<PreviewedMessage> preview;
    for (std::size_t index = messages.size() - std::min(messages.size(), previewed); index < messages.size(); ++index) {
        preview.push_back({excerpt(messages[index]), messages[index].fromMe});
    }
    return preview;
}

std::string spokenText(const PreviewedMessage& message)
{
    return std::string(message.fromMe ? userName : assistantName) + ": " + message.text;
}

std::vector<PreviewedMessage> exampleConversation()
{
    return {{"Find me a dinner spot for Friday", true},
            {"Lupa has a table for two at 7:30. Want me to book it?", false},
            {"Booked. I added it to your calendar and texted you the address.", false},
            {"Can you also remind me to buy flowers", true},
            {"Done. I'll remind you Friday at 5 pm.", false}};
}

} // namespace vorn
