#include "VornMac/Text/FindText.h"

#include "Platform/Base/Match.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/QuestText.h"

#include <string_view>

namespace vorn {
namespace {

/// The parts of the screen that depend on the scan.
struct Finding {
    const char* title;
    StatusText status{};
    std::vector<std::string> hints{};
    const char* primary = ""; ///< empty if there is nothing to upload: then the screen offers to look again
};

constexpr const char* notAvailable = "Not available yet";
constexpr const char* uploadChat = "Upload chat";

Finding looking()
{
    return {.title = "Looking in Messages…",
            .status = {Tone::waiting, "Reading a private copy of your Messages history…"},
            .primary = uploadChat};
}

Finding notFound()
{
    return {.title = "Not found on this Mac",
            .hints = {"No conversation with Nimbrel on this Mac.",
                      "Make sure Messages on this Mac is signed in with the Apple ID you text Nimbrel from, and that "
                      "Messages in iCloud is on so your history syncs here."}};
}

Finding findingOf(const ScanPhase& phase)
{
    const Match finding{
        [](phase::Idle) { return looking(); },
        [](phase::Loading) { return looking(); },
        [](phase::Unavailable) -> Finding { return {notAvailable, {Tone::warning, questUnavailable}}; },
        [](phase::NotConfigured) -> Finding {
            return {notAvailable, {Tone::warning, "Nimbrel export isn't set up yet. Try again later."}};
        },
        [](phase::NotFound) { return notFound(); },
        [](phase::Found) -> Finding { return {.title = "Found on this Mac", .primary = uploadChat}; },
        [](const phase::Failed& failed) -> Finding { return {somethingWrong, {Tone::bad, failed.text}}; },
    };
    return std::visit(finding, phase);
}

} // namespace

ScreenText findText(const ScanPhase& phase, const std::optional<QuestAvailability>& availability)
{
    const Finding finding = findingOf(phase);
    const bool isFound = std::holds_alternative<phase::Found>(phase);
    // This screen does not follow a review, so it offers to look again.
    const bool isInReview = isFound && availability && availability->is<QuestAvailability::InReview>();
    const bool isDeadEnd = std::string_view(finding.primary).empty();
    return {.title = finding.title,
            .subtitle = yourChat,
            .status = finding.status,
            .remark = isFound && availability ? availabilityNote(*availability) : StatusText{},
            .hints = finding.hints,
            .retry = isDeadEnd || isInReview ? "Look again" : "",
            .primary = finding.primary,
            .back = goBack,
            .caption = isFound ? "Only on this Mac. Nothing is uploaded yet." : ""};
}

bool isLooking(const ScanPhase& phase)
{
    return std::holds_alternative<phase::Idle>(phase) || std::holds_alternative<phase::Loading>(phase);
}

} // namespace vorn
