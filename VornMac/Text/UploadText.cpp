#include "VornMac/Text/UploadText.h"

#include "Platform/Base/Match.h"
#include "VornMac/Text/ByteText.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/TimeLeft.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr const char* inProgress = "Uploading";

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
    return {.title = inProgress,
            .subtitle = yourChat,
            .status = statusOf(phase),
            .retry = std::holds_alternative<phase::Failed>(phase) ? tryAgain : "",
            .caption = rewardHeading};
}

UploadBar uploadBar(const UploadPhase& phase)
{
    constexpr UploadBar packing{.isBusy = true};
    const Match bar{
        [&](phase::Idle) { return packing; },
        [&](phase::Preparing) { return packing; },
        [](const phase::Uploading& uploading) { return UploadBar{.value = uploading.fraction, .isMeasured = true}; },
        [](phase::Finishing) { return UploadBar{.value = 1, .isMeasured = true}; },
        [](const phase::Failed&) { return UploadBar{}; },
    };
    return std::visit(bar, phase);
}

RewardStatus rewardStatus(const UploadPhase& phase)
{
    static const RewardStatus packing{RewardStanding::packing, "Packing"};
    const Match status{
        [](phase::Idle) { return packing; },
        [](phase::Preparing) { return packing; },
        [](const phase::Uploading&) -> RewardStatus { return {RewardStanding::sending, inProgress}; },
        [](phase::Finishing) -> RewardStatus { return {RewardStanding::sending, "Finishing"}; },
        [](const phase::Failed&) -> RewardStatus { return {RewardStanding::notSent, "Not sent"}; },
    };
    return std::visit(status, phase);
}

int wholePercents(double fraction)
{
    constexpr double rounding = 1e-6; // 0.29 is a little less than 29 hundredths
    const int percents = static_cast<int>(std::floor(fraction * 100 + rounding));
    return fraction < 1 ? std::min(percents, 99) : percents;
}

std::string percentText(double fraction)
{
    return fmt::format("{} percent", wholePercents(fraction));
}

std::string percentLabel(double fraction)
{
    return fmt::format("{} %", wholePercents(fraction));
}

std::string uploadAmounts(const UploadBar& bar, const UploadProgress& progress,
                          std::optional<std::chrono::seconds> timeLeft)
{
    if (!bar.isMeasured || progress.totalBytes < 1) return "";
    const std::string amounts = partText(progress.bytesSent, progress.totalBytes);
    return timeLeft && bar.isMoving() ? amounts + ", " + timeLeftText(*timeLeft) : amounts;
}

} // namespace vorn
