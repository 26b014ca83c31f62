#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <string>

/// The texts of the link screen, and of a terminal about linking. Threads: any.
namespace vorn {

ScreenText linkText(const LinkPhase& phase);

/// The same for a terminal: only the title, on one line, and the steps.
ScreenText linkTextForTerminal();

/// `seconds`, at least 0, as minutes and seconds: "1:58".
std::string clockText(int seconds);

// Texts around the code.

inline constexpr const char* codeName = "QR code to link this Mac"; ///< for a screen reader
inline constexpr const char* codeIsRead = "Confirm on your phone";
inline constexpr const char* codeLifetime = "New code in "; ///< followed by the time

} // namespace vorn
