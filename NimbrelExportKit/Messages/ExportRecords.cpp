#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <algorithm>
#include <chrono>

namespace vorn {
namespace {

Instant timeOf(const ExportedMessage& message)
{
    return Instant(std::chrono::seconds(message.sentAt));
}

} // namespace

void SkipTally::add(std::string_view reason, std::int64_t n)
{
    auto found = counts.find(reason);
    if (found == counts.end()) found = counts.emplace(reason, 0).first;
    found->second += n;
}

std::int64_t SkipTally::operator[](std::string_view reason) const
{
    const auto found = counts.find(reason);
    return found == counts.end() ? 0 : found->second;
}

NimbrelExportStats::NimbrelExportStats(const std::vector<NimbrelChat>& chats, const MessageList& messages)
    : chatCount(static_cast<std::int64_t>(chats.size())), messageCount(static_cast<std::int64_t>(messages.size())),
      promptCount(std::count_if(messages.begin(), messages.end(), [](const auto& message) { return message.fromMe; })),
      replyCount(messageCount - promptCount)
{
    if (messages.empty()) return;
    firstAt = timeOf(messages.front());
    lastAt = timeOf(messages.back());
}

std::vector<std::string> NimbrelExportResult::agentHandles() const
{
    std::vector<std::string> handles;
    for (const NimbrelChat& chat : chats) {
        if (std::find(handles.begin(), handles.end(), chat.handle) == handles.end()) handles.push_back(chat.handle);
    }
    return handles;
}

} // namespace vorn
