#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <string>

/// The link screen, and what a terminal says of linking. Threads: any.
namespace vorn {

ScreenText linkText(const LinkPhase& phase);

/// As above, with the title in one line, for a terminal: only the title and the steps.
ScreenText linkTextForTerminal();

/// `seconds`, at least 0, as minutes and seconds: "1:58".
std::string clockText(int seconds);

// Around the code.

inline constexpr const char* codeName = "QR code to link this Mac"; ///< for a screen reader
inline constexpr const char* codeIsRead = "Confirm on your phone";
inline constexpr const char* codeLifetime = "New code in "; ///< and then the time

} // namespace vorn
