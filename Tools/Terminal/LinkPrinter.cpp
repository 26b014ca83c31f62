#include "Tools/Terminal/LinkPrinter.h"

#include "Tools/Terminal/ChatLines.h"
#include "Tools/Terminal/CommandFailure.h"
#include "VornMac/Text/LinkText.h"

#include <stdexcept>
#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr const char* whenUnreadable = "If your phone cannot read the code, try --background light, or dark.";

} // namespace

LinkPrinter::LinkPrinter(const Terminal& terminal, std::optional<TerminalOptions::Background> background)
    : terminal_(terminal), ink_(terminal.ink(background))
{
}

void LinkPrinter::show(const LinkPhase& phase, const std::optional<std::string>& qrPayload)
{
    if (std::holds_alternative<phase::Loading>(phase)) tellLoading();
    if (std::holds_alternative<phase::Showing>(phase) && qrPayload) tellCode(*qrPayload);
    if (std::holds_alternative<phase::Scanned>(phase) || std::holds_alternative<phase::Rejected>(phase))
        terminal_.say(linkText(phase).status.text);
    if (const auto* failed = std::get_if<phase::Failed>(&phase)) tellFailure(failed->text);
}

void LinkPrinter::tellLoading() const
{
    // Not after a failure: retries would repeat it every five seconds.
    if (lastFailure_.empty()) terminal_.say(linkText(phase::Loading{}).status.text);
}

void LinkPrinter::tellCode(const std::string& qrPayload)
{
    lastFailure_.clear();
    const QRCodeText code = codeOf(qrPayload);
    const auto window = terminal_.window();
    if (window && code.columns() > window->columns) {
        terminal_.say(fmt::format("The code needs {} columns, but this window has {}. Make it wider and run this "
                                  "again, or wait for the next code.",
                                  code.columns(), window->columns));
        return;
    }
    if (!std::exchange(explained_, true))
        for (const std::string& line : instructionLines(linkTextForTerminal())) terminal_.say(line);
    if (ink_ != QRCodeText::Ink::colours) terminal_.say(whenUnreadable);
    if (window && static_cast<int>(code.lines().size()) >= window->rows) {
        terminal_.say(fmt::format("The code needs {} lines. Make the window taller to see all of it.",
                                  code.lines().size() + 1)); // one for the cursor
    }
    terminal_.say(linkText(phase::Showing{}).status.text);
    draw(code);
}

QRCodeText LinkPrinter::codeOf(const std::string& qrPayload) const
{
    try {
        return {qrPayload, ink_};
    } catch (const std::length_error&) {
        throw CommandFailure(TerminalStatus::refused, "The server sent a code that cannot be drawn.");
    }
}

void LinkPrinter::draw(const QRCodeText& code) const
{
    std::string picture;
    for (const std::string& line : code.lines()) picture += (picture.empty() ? "" : "\n") + line;
    terminal_.say(picture);
}

void LinkPrinter::tellFailure(const std::string& words)
{
    const std::string text = spokenWords(words);
    if (std::exchange(lastFailure_, text) != text) terminal_.say(text);
}

} // namespace vorn
