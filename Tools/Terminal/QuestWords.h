#pragma once

#include "VornMacCore/Quest/QuestAvailability.h"
#include "VornMacCore/Wire/QuestRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <string>

namespace vorn {

/// What the quest's state means for the next upload, as one line for the user. Dates are those of the user's zone.
std::string availabilityText(const QuestAvailability& availability);

/// When a user whose upload was just paid may make the next; empty when no day is known.
std::string nextUploadText(const QuestAvailability& availability);

/// "cooldown", "lastRejected", "available" or "inReview", for programs.
std::string availabilityName(const QuestAvailability& availability);

/// How a submission's review stands, as one line for the user. `questReward` stands in where the submission names no
/// amount.
std::string submissionText(const SubmissionStatus& submission, const std::string& questReward);

} // namespace vorn
