#include "Tools/Terminal/ChatLines.h"

#include "Platform/Base/PrintableText.h"
#include "Platform/Base/Text.h"
#include "VornMac/Text/Preview.h"
#include "VornMac/Text/StatisticsText.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr std::size_t columns = 80;
constexpr const char* indent = "  ";

std::size_t widthOf(const std::string& text)
{
    return text::scalars(text).size(); // each character of these texts takes one column
}

void addWrapped(std::vector<std::string>& lines, const std::string& paragraph)
{
    std::istringstream words(paragraph);
    std::string line = " ";
    for (std::string word; words >> word;) {
        if (widthOf(line) + 1 + widthOf(word) > columns) lines.push_back(std::exchange(line, " "));
        line += " " + word;
    }
    lines.push_back(line);
}

void addSection(std::vector<std::string>& lines, const Consent::Section& section)
{
    lines.push_back(section.heading);
    for (const std::string& point : section.points) addWrapped(lines, point);
}

} // namespace

std::vector<std::string> consentLines(const Consent& consent)
{
    std::vector<std::string> lines{consent.line, ""};
    for (const auto& section : {consent.reads, consent.neverReads, consent.next}) addSection(lines, section);
    lines.emplace_back();
    return lines;
}

std::vector<std::string> instructionLines(const ScreenText& text)
{
    std::vector<std::string> lines{text.title};
    for (const std::string& paragraph : text.lead) addWrapped(lines, paragraph);
    int number = 0;
    for (const std::string& step : text.steps) lines.push_back(fmt::format("{}{}. {}", indent, ++number, step));
    return lines;
}

std::vector<std::string> statisticsLines(const NimbrelExportStats& stats)
{
    std::vector<std::string> lines;
    for (const StatisticsRow& row : statisticsRows(stats))
        lines.push_back(fmt::format("{}{:<17}{}", indent, row.label, row.value));
    return lines;
}

std::vector<std::string> previewLines(const MessageList& messages)
{
    std::vector<std::string> lines;
    for (PreviewedMessage& message : previewOf(messages)) {
        std::ranges::replace(message.text, '\n', ' '); // each message has one line here
        lines.push_back(indent + printable(spokenText(message)));
    }
    return lines;
}

} // namespace vorn
