#include "Tools/Terminal/EverythingLines.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Terminal/ChatLines.h"
#include "VornMac/Text/DrawableText.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/MessageEntry.h"
#include "VornMac/Text/MessageSearch.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr const char* indent = "  ";

/// Each line of `text`, which comes from `drawable`, indented.
std::string indented(std::string_view text)
{
    std::string lines;
    while (true) {
        const std::size_t end = text.find('\n');
        const std::string line = printableWhole(text.substr(0, end));
        lines += (line.empty() ? "" : indent) + line + "\n";
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

std::string headed(const char* heading, const std::vector<std::string>& lines)
{
    std::string text = std::string(heading) + "\n";
    for (const std::string& line : lines) text += indented(line);
    return text;
}

std::vector<std::string> leftOutLines(const SkipTally& skipped)
{
    std::vector<std::string> lines;
    for (const LeftOutRow& row : leftOutRows(skipped))
        lines.push_back(fmt::format("{:<17}{:<7}{}", row.label, row.count, row.reason));
    lines.push_back(leftOutNote(skipped));
    return lines;
}

/// Lists the messages one by one, under a heading for each day.
class Teller {
public:
    explicit Teller(const TextSink& sink) : sink_(sink) {}

    bool tell(const ExportedMessage& message)
    {
        const MessageEntry entry = entryOf(message, dates_);
        std::string text = std::exchange(day_, entry.day) == entry.day ? "\n" : "\n" + entry.day + "\n\n";
        text += entry.author + printableWhole(" · " + detailText(entry)) + "\n";
        if (!message.text.empty()) text += indented(drawable(message.text)); // whole, whatever its length
        for (const auto& texts : {entry.links, entry.attachments}) {
            for (const std::string& each : texts) text += indented("→ " + each);
        }
        return sink_(text);
    }

private:
    const TextSink& sink_;
    LocalDates dates_;
    std::string day_;
};

} // namespace

void listEverything(const NimbrelExportResult& result, const NimbrelExportStats& stats, const TextSink& sink)
{
    std::string head = std::string(everythingTitle) + "\n";
    for (const std::string& line : statisticsLines(stats)) head += line + "\n";
    head += headed(leftOutHeading, leftOutLines(result.skipped)) + headed(besidesHeading, besideTexts(result));
    if (!sink(head)) return;
    Teller teller(sink);
    for (const ExportedMessage& message : result.messages) {
        if (!teller.tell(message)) return;
    }
}

std::size_t listFound(const NimbrelExportResult& result, const std::string& words, const TextSink& sink)
{
    MessageSearch search(words);
    Teller teller(sink);
    std::size_t count = 0;
    for (const ExportedMessage& message : result.messages) {
        if (!search.finds(message)) continue;
        ++count;
        if (!teller.tell(message)) return count;
    }
    return count;
}

} // namespace vorn
