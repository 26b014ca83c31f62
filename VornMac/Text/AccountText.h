#pragma once

#include <string>

/// The window's title, its account menu, and a terminal's texts about who is linked. Threads: any.
namespace vorn {

inline constexpr const char* windowTitle = "Vorn";
inline constexpr const char* account = "Account";
inline constexpr const char* signOutOfThisMac = "Sign out of this Mac";

std::string signedInText(const std::string& displayName);

/// A terminal's text once the phone has confirmed.
std::string linkedText(const std::string& displayName);

/// Which of the `count` screens is shown: `number` counts from 1. For a screen reader.
std::string stepText(int number, int count);

} // namespace vorn
