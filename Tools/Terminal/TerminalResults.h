#pragma once

#include "Platform/Base/Dates.h"
#include "Tools/Terminal/UploadFlow.h"
#include "VornMacCore/Sessions/StoredSession.h"

#include <optional>
#include <string>

namespace vorn {

/// What `upload` tells.
struct UploadResult {
    SubmissionStatus submission;
    ArchiveFacts archive;
    std::string questReward; ///< for a submission that names no amount
};

/// Lines for a person.
std::string textOf(const UploadResult& result);

/// One JSON object for programs: "submission" with "id", "status", "rejectionReasonKey" and "rewardUsd" (text; both
/// null when absent), and "archive" with "sizeBytes" and "sha256".
std::string jsonOf(const UploadResult& result);

/// What `status` tells.
struct StatusReport {
    LinkedUser user;
    NimbrelState quest;
    Instant now; ///< when the quest's state was read
    std::optional<SubmissionStatus> submission;
};

std::string textOf(const StatusReport& report);

/// One JSON object for programs: "user" with "id" and "displayName"; "quest" with "id", "title", "status",
/// "availability", "canUpload", "availableAt", "rejectionReasonKey", "rewardUsd" (a number) and "maxBytes";
/// "submission" as above. What is absent is null.
std::string jsonOf(const StatusReport& report);

} // namespace vorn
