#include "Tools/Export/ExportStatistics.h"

#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/StatisticsText.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

std::string dateOf(const std::optional<Instant>& time)
{
    return time ? internetDateTime(*time) : "none";
}

nlohmann::ordered_json jsonDate(const std::optional<Instant>& time)
{
    return time ? nlohmann::ordered_json(internetDateTime(*time)) : nlohmann::ordered_json(nullptr);
}

std::string line(std::string_view label, std::string_view value)
{
    return fmt::format("{:<16}{}\n", label, value);
}

} // namespace

std::string textOf(const ExportStatistics& statistics)
{
    const auto& [stats, skipped, archive, sha256] = statistics;
    std::string text = line("Chats", countText(stats.chatCount)) + line("Messages", countText(stats.messageCount)) +
                       line("  yours", countText(stats.promptCount)) + line("  replies", countText(stats.replyCount)) +
                       line("First message", dateOf(stats.firstAt)) + line("Last message", dateOf(stats.lastAt));
    std::int64_t total = 0;
    for (const auto& [reason, count] : skipped.counts) total += count;
    text += line(leftOutHeading, countText(total));
    for (const auto& [reason, count] : skipped.counts) text += line("  " + reason, countText(count));
    return text + line("Archive", archive.url.string()) + line("  size", countText(archive.sizeBytes) + " bytes") +
           line("  SHA-256", sha256);
}

std::string jsonOf(const ExportStatistics& statistics)
{
    const auto& [stats, skipped, archive, sha256] = statistics;
    const nlohmann::ordered_json document = {
        {"chats", stats.chatCount},
        {"messages", stats.messageCount},
        {"prompts", stats.promptCount},
        {"replies", stats.replyCount},
        {"firstAt", jsonDate(stats.firstAt)},
        {"lastAt", jsonDate(stats.lastAt)},
        {"skipped", nlohmann::ordered_json(nlohmann::json(skipped.counts))},
        {"archive", {{"path", archive.url.string()}, {"sizeBytes", archive.sizeBytes}, {"sha256", sha256}}},
    };
    // A path need not be UTF-8; the rest is.
    return document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace vorn
