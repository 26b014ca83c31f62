#pragma once

#include "Platform/Base/Dates.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <optional>
#include <string>

namespace vorn {

/// The result of the whole path, as lines for a user who already knows how the review ended.
std::string textOf(const SubmissionStatus& submission);

/// What `status` prints.
struct StatusReport {
    LinkedUser user;
    NimbrelState nimbrel;
    Instant now; ///< when the quest's state was read
    std::optional<SubmissionStatus> submission;
};

std::string textOf(const StatusReport& report);

/// One JSON object for programs: "user" with "id" and "displayName"; "quest" with "id", "title", "status",
/// "availability", "canUpload", "availableAt", "rejectionReasonKey", "rewardUsd" (a number) and "maxBytes";
/// "submission" with "id", "status", "rejectionReasonKey" and "rewardUsd" (text). Absent values are null.
std::string jsonOf(const StatusReport& report);

} // namespace vorn
