#pragma once

#include "VornSandbox/Service/StateDatabase.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// A submission with its one asset, as it is stored. Its stored status is "open" (parts arrive), "assembling" (the
/// parts are being joined and checked), "review", "approved", "rejected", "expired" or "aborted".
struct Submission {
    std::string id;
    std::string userId;
    std::int64_t attempt = 0; ///< counts from 1 for each account
    std::string assetId;
    std::string uploadId;
    std::int64_t sizeBytes = 0;
    std::int64_t partCount = 0;
    std::int64_t partSize = 0;
    std::string status;
    std::optional<std::string> reason; ///< of a rejection
    Instant createdAt;
    Instant completedAt; ///< when the review began
    Instant decidedAt;   ///< when the review ended
    std::string finding; ///< what reading the archive found

    /// The exact size in bytes that part `number` must have.
    std::int64_t sizeOfPart(std::int64_t number) const;
    bool isDecided() const { return status == "approved" || status == "rejected" || status == "expired"; }
};

struct ReceivedPart {
    std::int64_t number = 0;
    std::string etag; ///< in quotes
    bool operator==(const ReceivedPart&) const = default;
};

/// Reads submissions. Threads: hold the state's lock.
std::optional<Submission> findSubmission(const StateDatabase& state, const std::string& id);
/// The newest one that `condition`, a fixed piece of SQL over the table's columns, lets through.
std::optional<Submission> newestSubmission(const StateDatabase& state, const std::string& userId,
                                           const std::string& condition);
/// All accounts' newest submissions, the newest first.
std::vector<Submission> newestSubmissions(const StateDatabase& state, std::int64_t atMost);
std::vector<ReceivedPart> partsOf(const StateDatabase& state, const std::string& submissionId);

} // namespace vorn::sandbox
