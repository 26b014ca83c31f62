#include "VornMac/Text/EverythingText.h"

#include "Platform/Base/Match.h"
#include "VornMac/Text/DrawableText.h"
#include "VornMac/Text/StatisticsText.h"
#include "VornMac/Text/UploadText.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace vorn {
namespace {

struct Reason {
    std::string_view key; ///< in the tally
    const char* label;
    const char* sentence;
};

constexpr std::array reasons{
    Reason{"reaction", "Reactions", "Hearts, thumbs and other tapbacks."},
    Reason{"unsent", "Unsent messages", "Their senders unsent them."},
    Reason{"system", "Notices", "Notes by Messages itself, such as a changed name."},
    Reason{"empty", "Empty messages", "They have neither text nor attachments."},
    Reason{"undated", "Undated messages", "They come before the first message with a date."},
};

bool isKnown(std::string_view key)
{
    return std::ranges::find(reasons, key, &Reason::key) != reasons.end();
}

std::string addressesText(const std::vector<std::string>& handles)
{
    return handles.empty() ? "" : drawable(fmt::format(" ({})", fmt::join(handles, ", ")));
}

} // namespace

std::vector<LeftOutRow> leftOutRows(const SkipTally& skipped)
{
    std::vector<LeftOutRow> rows;
    for (const auto& [key, label, sentence] : reasons) {
        if (const std::int64_t count = skipped[key]; count > 0) rows.push_back({label, countText(count), sentence});
    }
    for (const auto& [key, count] : skipped.counts) {
        if (!isKnown(key)) rows.push_back({key, countText(count), ""});
    }
    return rows;
}

std::string leftOutNote(const SkipTally& skipped)
{
    const char* files = "The files of attachments are never read.";
    return skipped.counts.empty() ? std::string("No message of this chat. ") + files : files;
}

std::vector<std::string> besideTexts(const NimbrelExportResult& result)
{
    return {"For each message: its identifier in Messages, its chat's and, in a reply, that of the original message.",
            fmt::format("Nimbrel's addresses{}, these counts, the time of the export, and the versions of Vorn and "
                        "macOS.",
                        addressesText(result.agentHandles()))};
}

std::string listedText(std::size_t listed, std::size_t all, bool isSearching)
{
    const auto count = [](std::size_t number) { return countText(static_cast<std::int64_t>(number)); };
    const char* messages = all == 1 ? "message" : "messages";
    return isSearching ? fmt::format("{} of {} {}", count(listed), count(all), messages)
                       : fmt::format("{} {}", count(all), messages);
}

std::string nothingFoundText(const std::string& words)
{
    return fmt::format("No message contains “{}”.", words);
}

StatusText copyText(const CopyPhase& phase)
{
    const Match text{
        [](phase::Idle) { return StatusText{}; },
        [](phase::Preparing) { return uploadText(phase::Preparing{}).status; },
        [](const phase::Saved& saved) -> StatusText {
            return {Tone::good, fmt::format("Saved as {} on this Mac.", saved.name)};
        },
        [](const phase::Failed& failed) -> StatusText { return {Tone::bad, failed.text}; },
    };
    return std::visit(text, phase);
}

} // namespace vorn
