#pragma once

#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"

#include <optional>
#include <string>

namespace vorn::sandbox {

/// The one quest that an export serves.
constexpr auto questId = "quest_nimbrel";

/// Where an account stands with the quest. Its last upload decides; unfinished and aborted ones do not count.
struct QuestStanding {
    std::string status; ///< "available", "submitted", "approved" or "rejected"
    std::optional<std::string> rejectionReasonKey;
    std::optional<Instant> availableAt; ///< the end of the cooldown after an approval
};

/// Threads: hold the state's lock; settle the reviews before.
QuestStanding questStanding(const StateDatabase& state, const Settings& settings, const std::string& userId);

} // namespace vorn::sandbox
