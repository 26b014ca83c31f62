#pragma once

#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Wire/QuestAvailability.h"
#include "VornMacCore/Wire/QuestRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>
#include <string>

/// What the quest and a submission mean for the user, in words. Dates are those of the user's zone. Threads: any.
namespace vorn {

/// A sentence about the last upload; empty when the user may simply make one.
StatusText availabilityNote(const QuestAvailability& availability);

/// As above for a terminal, which says as well that the user may upload.
std::string availabilityLine(const QuestAvailability& availability);

/// What an accepted upload earns: an amount, or "the quest reward" when that is not known.
std::string rewardText(const std::optional<NimbrelState>& nimbrel);

/// What `submission` earns: its own amount, else `questReward`.
std::string earnedText(const SubmissionStatus& submission, const std::string& questReward);

/// Whether `earned`, as above, is an amount rather than words.
bool isAmount(const std::string& earned);

/// `earned`, as above, while it is counted up: `part` of it, 0…1. Words are not counted, and stay as they are.
std::string countedText(const std::string& earned, double part);

/// Why `submission` was rejected.
std::string rejectionText(const SubmissionStatus& submission);

inline constexpr const char* questName = "Chat export quest"; ///< under the amount

} // namespace vorn
