#pragma once

#include "VornMacCore/Wire/QuestRecords.h"

#include <exception>
#include <optional>
#include <string>

namespace vorn {

/// The line that tells the user about any error: the error's own sentence where it was written for users. It may hold
/// words of the service, as they came. Threads: any.
std::string describe(const std::exception& error);

/// What an accepted upload earns: an amount, or "the quest reward" when that is not known.
std::string rewardText(const std::optional<NimbrelState>& quest);

} // namespace vorn
