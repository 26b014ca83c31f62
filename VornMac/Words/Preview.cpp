#include "VornMac/Words/Preview.h"

#include "Platform/Base/Text.h"

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
    std::string first = text::prefixOfCharacters(text, longest);
    if (first.size() < text.size()) first += "…";
    return first;
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

} // namespace vorn
