#pragma once

/// Texts of more than one screen.
namespace vorn {

inline constexpr const char* yourChat = "Your Nimbrel chat";
inline constexpr const char* tryAgain = "Try again";
inline constexpr const char* goOn = "Continue";
inline constexpr const char* goBack = "Back";
inline constexpr const char* stepIsDone = "Done";      ///< for a screen reader
inline constexpr const char* stepIsNext = "Next";      ///< for a screen reader
inline constexpr const char* rewardHeading = "Reward"; ///< above the panel beside the upload and its review
inline constexpr const char* fullDiskAccessPath = "Open System Settings → Privacy & Security → Full Disk Access.";

} // namespace vorn
