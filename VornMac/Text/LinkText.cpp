#include "VornMac/Text/LinkText.h"

#include "Platform/Base/Match.h"
#include "VornMac/Text/CommonText.h"

#include <fmt/format.h>

namespace vorn {
namespace {

StatusText statusOf(const LinkPhase& phase)
{
    const Match status{
        [](phase::Loading) -> StatusText { return {Tone::waiting, "Getting a code…"}; },
        [](phase::Showing) -> StatusText { return {Tone::waiting, "Waiting for your phone"}; },
        [](phase::Scanned) -> StatusText { return {Tone::good, "Scanned. Confirm Link this Mac on your phone."}; },
        [](phase::Rejected) -> StatusText {
            return {Tone::warning, "Your phone declined the link. Here's a new code."};
        },
        [](const phase::Failed& failed) -> StatusText { return {Tone::bad, failed.text}; },
    };
    return std::visit(status, phase);
}

} // namespace

ScreenText linkText(const LinkPhase& phase)
{
    return {.title = "Link your phone",
            .subtitle = "Your phone links this Mac",
            .heading = "Scan with the Vorn app",
            .steps = {"Open Vorn on your iPhone.", "Open the Nimbrel chat quest and tap Link a Mac.",
                      "Point your camera at the code, then confirm on your phone."},
            .status = statusOf(phase),
            .note = "Vorn for Mac only uploads your Nimbrel chat. Linking gives this Mac no access to anything else in "
                    "your account.",
            .retry = std::holds_alternative<phase::Failed>(phase) ? tryAgain : ""};
}

ScreenText linkTextForTerminal()
{
    return {.title = "Link your phone: scan with the Vorn app", .steps = linkText(phase::Loading{}).steps};
}

std::string clockText(int seconds)
{
    return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

} // namespace vorn
