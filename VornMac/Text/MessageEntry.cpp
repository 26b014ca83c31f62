#include "VornMac/Text/MessageEntry.h"

#include "Platform/Base/Text.h"
#include "VornMac/Text/DrawableText.h"
#include "VornMac/Text/Preview.h"
#include "VornMac/Text/StatisticsText.h"

#include <chrono>
#include <cstdint>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace vorn {
namespace {

/// More than anybody writes. A text of megabytes would take seconds to lay out.
constexpr std::size_t shownCharacters = 20'000;

const char* kindOf(std::string_view mimeType)
{
    if (mimeType.starts_with("image/")) return "Photo";
    if (mimeType.starts_with("video/")) return "Video";
    if (mimeType.starts_with("audio/")) return "Audio";
    return "File";
}

void addText(MessageEntry& entry, std::string_view text)
{
    const bool fits = text.size() <= shownCharacters; // in bytes, and therefore in characters
    const std::string first = fits ? std::string(text) : text::prefixOfCharacters(text, shownCharacters);
    entry.text = drawable(first);
    if (first.size() == text.size()) return;
    const std::size_t more = text::scalars(text.substr(first.size())).size();
    entry.rest = fmt::format("{} more characters are in the archive.", countText(static_cast<std::int64_t>(more)));
}

} // namespace

MessageEntry entryOf(const ExportedMessage& message, const LocalDates& dates)
{
    const Instant sent{std::chrono::seconds(message.sentAt)};
    MessageEntry entry{.day = dates.day(sent),
                       .time = dates.time(sent),
                       .author = message.fromMe ? userName : assistantName,
                       .fromMe = message.fromMe};
    if (message.service) entry.remarks.push_back(drawable(*message.service));
    if (message.edited) entry.remarks.emplace_back("Edited");
    if (message.replyToGuid) entry.remarks.emplace_back("Reply");
    addText(entry, message.text);
    for (const ExportedLink& link : message.links) entry.links.push_back(drawable(link.url));
    for (const ExportedAttachment& attachment : message.attachments)
        entry.attachments.push_back(attachmentText(attachment.mimeType));
    return entry;
}

std::string detailText(const MessageEntry& entry)
{
    return entry.remarks.empty() ? entry.time : fmt::format("{} · {}", entry.time, fmt::join(entry.remarks, " · "));
}

std::string linesOf(const std::vector<std::string>& texts)
{
    return fmt::format("{}", fmt::join(texts, "\n"));
}

std::string spokenText(const MessageEntry& entry)
{
    std::string spoken = fmt::format("{}, {}, {}", entry.author, entry.day, detailText(entry));
    for (const std::string& part : {entry.text, entry.rest, linesOf(entry.links), linesOf(entry.attachments)}) {
        if (!part.empty()) spoken += "\n" + part;
    }
    return spoken;
}

std::string attachmentText(std::string_view mimeType)
{
    return fmt::format("{} ({})", kindOf(mimeType), drawable(mimeType));
}

} // namespace vorn
