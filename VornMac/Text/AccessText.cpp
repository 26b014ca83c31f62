#include "VornMac/Text/AccessText.h"

#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/ErrorText.h"

namespace vorn {
namespace {

constexpr const char* explanation =
    "macOS keeps your Messages history behind Full Disk Access. Vorn opens a private copy, reads only your Nimbrel "
    "conversation, and deletes the copy right after.";

StatusText statusOf(FullDiskAccessStatus access)
{
    switch (access) {
    case FullDiskAccessStatus::granted: return {Tone::good, "Access granted."};
    case FullDiskAccessStatus::denied: return {Tone::waiting, "Waiting for access…"};
    case FullDiskAccessStatus::noDatabase: break;
    }
    return {Tone::warning, std::string(noMessages) +
                               " Sign in to Messages with the Apple ID you text Nimbrel from, then "
                               "come back."};
}

/// How to switch on `application`, and what to do if it is not listed.
std::string switchOn(const std::string& application, const std::string& otherwise)
{
    return "Turn on " + application + ". Not in the list? Click +" + otherwise + ".";
}

} // namespace

ScreenText accessText(FullDiskAccessStatus status)
{
    const bool isDenied = status == FullDiskAccessStatus::denied;
    return {.title = "Allow Full Disk Access",
            .subtitle = "So Vorn can read Messages",
            .lead = {explanation},
            .steps = {fullDiskAccessPath, switchOn("Vorn", ", or drag Vorn in from Finder"),
                      "If macOS asks to quit and reopen Vorn, choose Quit & Reopen."},
            .status = statusOf(status),
            .note = isDenied ? "Turned on but still waiting? Quit and reopen Vorn. After an update macOS can forget "
                               "the switch: turn Vorn off and on again."
                             : "",
            .retry = isDenied ? quitAndReopen : "",
            .primary = status == FullDiskAccessStatus::granted ? goOn : openSettings,
            .back = goBack};
}

ScreenText accessTextForTerminal()
{
    return {.title = "Allow Full Disk Access, so Vorn can read Messages",
            .lead = {explanation},
            .steps = {fullDiskAccessPath, switchOn("the terminal in which this runs", ""),
                      "If macOS asks to quit and reopen it, do so and run this again."}};
}

std::string accessRefused()
{
    return std::string("Allow Full Disk Access so Vorn can read Messages.\n") + fullDiskAccessPath;
}

std::string switchText(const std::string& application, bool isOn)
{
    return application + (isOn ? ", on" : ", off");
}

} // namespace vorn
