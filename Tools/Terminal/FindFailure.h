#pragma once

#include "Tools/Terminal/CommandFailure.h"
#include "VornMac/Text/Phases.h"

#include <optional>

namespace vorn {

/// The failure of a command that needs the chat, if a scan ended in `phase`; nothing if it found the chat.
std::optional<CommandFailure> failureOfFinding(const ScanPhase& phase);

} // namespace vorn
