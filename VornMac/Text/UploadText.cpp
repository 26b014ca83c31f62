#include "VornMac/Text/UploadText.h"

#include "Platform/Base/Match.h"
#include "VornMac/Text/CommonText.h"

#include <cmath>

#include <fmt/format.h>

namespace vorn {
namespace {

StatusText statusOf(const UploadPhase& phase)
{
    static const StatusText packing{Tone::waiting, "Packing your chat…"};
    const Match status{
        [](phase::Idle) { return packing; },
        [](phase::Preparing) { return packing; },
        [](const phase::Uploading&) -> StatusText {
            return {Tone::good, "Uploading securely. Keep this window open."};
        },
        [](phase::Finishing) -> StatusText { return {Tone::waiting, "Finishing up…"}; },
        [](const phase::Failed& failed) -> StatusText { return {Tone::bad, failed.text}; },
    };
    return std::visit(status, phase);
}

} // namespace

ScreenText uploadText(const UploadPhase& phase)
{
    return {.title = "Uploading",
            .subtitle = yourChat,
            .status = statusOf(phase),
            .retry = std::holds_alternative<phase::Failed>(phase) ? tryAgain : "",
            .caption = rewardHeading};
}

std::string percentText(double fraction)
{
    constexpr double rounding = 1e-6; // 0.29 is a little less than 29 hundredths
    return fmt::format("{} percent", static_cast<int>(std::floor(fraction * 100 + rounding)));
}

} // namespace vorn
