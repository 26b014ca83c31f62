#include "Tools/Terminal/LinkPrinter.h"

#include "Tools/Terminal/PrintableText.h"

#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr const char* steps = "Link your phone: scan with the Vorn app\n"
                              "  1. Open Vorn on your iPhone.\n"
                              "  2. Open the Nimbrel chat quest and tap Link a Mac.\n"
                              "  3. Point your camera at the code, then confirm on your phone.";

constexpr const char* whenUnreadable = "If your phone cannot read the code, try --background light, or dark.";

} // namespace

LinkPrinter::LinkPrinter(const Terminal& terminal, std::optional<TerminalOptions::Background> background)
    : terminal_(terminal), ink_(terminal.ink(background))
{
}

void LinkPrinter::show(const LinkPhase& phase)
{
    std::visit([this](const auto& state) { tell(state); }, phase.state);
}

void LinkPrinter::tell(const LinkPhase::Loading&)
{
    if (lastFailure_.empty()) terminal_.say("Getting a code…"); // every five seconds it would be noise
}

void LinkPrinter::tell(const LinkPhase::Showing& showing)
{
    lastFailure_.clear();
    if (!std::exchange(explained_, true)) terminal_.say(steps);
    draw(showing.qrPayload);
    terminal_.say("Waiting for your phone");
}

void LinkPrinter::draw(const std::string& qrPayload) const
{
    const QRCodeText code(qrPayload, ink_);
    if (code.columns() > terminal_.traits().columns) {
        terminal_.say(
            fmt::format("The code needs {} columns. Make the window wider for the next one.", code.columns()));
        return;
    }
    for (const std::string& line : code.lines()) terminal_.say(line);
    if (ink_ != QRCodeText::Ink::colours) terminal_.say(whenUnreadable);
}

void LinkPrinter::tell(const LinkPhase::Scanned&)
{
    terminal_.say("Scanned. Confirm Link this Mac on your phone.");
}

void LinkPrinter::tell(const LinkPhase::Rejected&)
{
    terminal_.say("Your phone declined the link. Here's a new code.");
}

void LinkPrinter::tell(const LinkPhase::Failed& failed)
{
    const std::string text = printable(failed.text);
    if (std::exchange(lastFailure_, text) != text) terminal_.say(text);
}

} // namespace vorn
