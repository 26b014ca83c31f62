#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Wire/QuestAvailability.h"

#include <optional>

/// The texts of the find screen. Dates are in the user's zone. Threads: any.
namespace vorn {

/// `availability` is what the quest says about another upload; absent until it is known.
ScreenText findText(const ScanPhase& phase, const std::optional<QuestAvailability>& availability);

/// Whether the scan has no result yet.
bool isLooking(const ScanPhase& phase);

} // namespace vorn
