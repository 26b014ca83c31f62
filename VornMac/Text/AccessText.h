#pragma once

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "VornMac/Text/ScreenText.h"

#include <string>
#include <vector>

/// The texts of the access screen, and of a terminal about Full Disk Access. Threads: any.
namespace vorn {

ScreenText accessText(FullDiskAccessStatus status);

/// The same for a program in a terminal: there the terminal needs the access. The title is one line.
ScreenText accessTextForTerminal();

/// For a program without a screen.
std::string accessRefused();

inline constexpr const char* accessMissing = "Vorn can't read Messages on this Mac yet."; ///< a program's last message

// Buttons.

inline constexpr const char* openSettings = "Open System Settings";
inline constexpr const char* showInFinder = "Show Vorn in Finder";
inline constexpr const char* quitAndReopen = "Quit & Reopen Vorn";

// The drawn pane of System Settings.

inline constexpr const char* settingsPath = "System Settings → Privacy & Security";
inline constexpr const char* settingsPane = "Full Disk Access";
inline constexpr const char* settingsExplanation =
    "Allow the applications below to access data like Mail, Messages, Safari and Time Machine backups.";
inline constexpr const char* thisApplication = "Vorn";
inline constexpr const char* someTerminal = "Terminal";
inline constexpr const char* someBackupUtility = "Backup Utility";

/// A row of that pane, for a screen reader: "Vorn, on".
std::string switchText(const std::string& application, bool isOn);

} // namespace vorn
