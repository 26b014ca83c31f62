#include "Tools/Terminal/FindFailure.h"

#include "VornMac/Text/FindText.h"

#include <fmt/ranges.h>

namespace vorn {

std::optional<CommandFailure> failureOfFinding(const ScanPhase& phase)
{
    const ScreenText text = findText(phase, std::nullopt);
    if (std::holds_alternative<phase::Unavailable>(phase) || std::holds_alternative<phase::NotConfigured>(phase))
        return CommandFailure(TerminalStatus::notNow, text.status.text);
    if (std::holds_alternative<phase::NotFound>(phase))
        return CommandFailure(TerminalStatus::notFound, fmt::format("{}", fmt::join(text.hints, "\n")));
    if (const auto* failed = std::get_if<phase::Failed>(&phase))
        return CommandFailure(TerminalStatus::failed, spokenWords(failed->lastWords));
    return std::nullopt;
}

} // namespace vorn
