#include "VornMac/Text/MessageSearch.h"

#include "Platform/Base/ASCII.h"
#include "Platform/Base/Text.h"
#include "VornMac/Text/MessageEntry.h"

#include <algorithm>

namespace vorn {

MessageSearch::MessageSearch(std::string_view words) : words_(text::lowercased(text::trimmed(words)))
{
}

bool MessageSearch::finds(const ExportedMessage& message)
{
    if (isEmpty() || isIn(message.text)) return true;
    for (const ExportedLink& link : message.links) {
        if (isIn(link.url)) return true;
    }
    for (const ExportedAttachment& attachment : message.attachments) {
        if (isIn(attachmentText(attachment.mimeType))) return true;
    }
    return false;
}

// Most texts are ASCII, which needs neither Unicode's tables nor an allocation.
bool MessageSearch::isIn(std::string_view text)
{
    const bool isASCII = std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!isASCII) return text::lowercased(text).find(words_) != std::string::npos;
    buffer_.resize(text.size());
    std::ranges::transform(text, buffer_.begin(), [](char c) { return ascii::lowercased(c); });
    return buffer_.find(words_) != std::string::npos;
}

} // namespace vorn
