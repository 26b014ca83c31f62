#pragma once

#include "Tools/Terminal/CommandFailure.h"
#include "VornMac/Text/Phases.h"

#include <optional>

namespace vorn {

/// How a command ends that needs the chat, where a scan has come to `phase`; nothing where it found the chat.
std::optional<CommandFailure> failureOfFinding(const ScanPhase& phase);

} // namespace vorn
