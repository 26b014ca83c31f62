#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <string>

/// The upload screen. Threads: any.
namespace vorn {

ScreenText uploadText(const UploadPhase& phase);

inline constexpr const char* archiveName = "vorn-nimbrel-export.zip"; ///< what the bar is called

/// How much of an upload is done, 0…1, for a screen reader: whole percents, rounded down.
std::string percentText(double fraction);

} // namespace vorn
