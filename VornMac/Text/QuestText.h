#pragma once

#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Wire/QuestAvailability.h"
#include "VornMacCore/Wire/QuestRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>
#include <string>

/// Texts about the quest and a submission. Dates are in the user's zone. Threads: any.
namespace vorn {

/// A sentence about the last upload; empty in the state `Available`.
StatusText availabilityNote(const QuestAvailability& availability);

/// The same for a terminal, where "You can upload your chat." replaces an empty text.
std::string availabilityLine(const QuestAvailability& availability);

/// The reward for an accepted upload: an amount, or "the quest reward" if it is not known.
std::string rewardText(const std::optional<NimbrelState>& nimbrel);

/// The reward for `submission`: its own amount, else `questReward`.
std::string earnedText(const SubmissionStatus& submission, const std::string& questReward);

/// Whether `earned`, as above, is an amount rather than words.
bool isAmount(const std::string& earned);

/// What is shown while `earned`, as above, is counted up: `part` of it, 0…1. Words stay as they are.
std::string countedText(const std::string& earned, double part);

/// Why `submission` was rejected.
std::string rejectionText(const SubmissionStatus& submission);

inline constexpr const char* questName = "Chat export quest"; ///< below the amount

} // namespace vorn
