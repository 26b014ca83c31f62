#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

// Exchanged to submit an export and to follow its review. JSON keys are the fields' names.

/// Sent with a submission: the time zone and locale of this Mac.
struct DeviceSignals {
    std::string timezone; ///< an IANA name such as "Europe/Berlin"
    std::string locale;   ///< in BCP 47 form, such as "en-US"
    bool operator==(const DeviceSignals&) const = default;
};

/// Sent: opens a submission.
struct CreateSubmissionRequest {
    std::string termsVersion;
    std::int64_t sizeBytes = 0; ///< of the archive
    std::int64_t partCount = 0;
    std::optional<DeviceSignals> device;
    bool operator==(const CreateSubmissionRequest&) const = default;
};

/// Received: where one part goes.
struct PresignedPart {
    std::int64_t partNumber = 0;
    std::string url; ///< lets its holder upload this part: a secret
    bool operator==(const PresignedPart&) const = default;
};

/// Received: one file of a submission.
struct UploadAsset {
    std::string assetId;
    std::int64_t position = 0;
    std::string uploadId;
    std::vector<PresignedPart> parts;
    bool operator==(const UploadAsset&) const = default;
};

/// Received: a submission that waits for its files.
struct SubmissionUpload {
    std::string submissionId;
    std::string questId;
    std::int64_t attempt = 0;
    std::vector<UploadAsset> assets;
    std::int64_t expiresInSeconds = 0; ///< how long the parts' URLs work
    bool operator==(const SubmissionUpload&) const = default;
};

/// Sent: asks for the URLs of more parts.
struct PartUrlsRequest {
    std::int64_t fromPart = 0; ///< the first part's number
    std::int64_t count = 0;
    bool operator==(const PartUrlsRequest&) const = default;
};

/// Received: the URLs of more parts.
struct PartUrls {
    std::string submissionId;
    std::string assetId;
    std::vector<PresignedPart> parts;
    std::int64_t expiresInSeconds = 0; ///< how long the URLs work
    bool operator==(const PartUrls&) const = default;
};

/// Sent: a part that has arrived.
struct CompletedPart {
    std::int64_t partNumber = 0;
    std::string etag; ///< as the part's upload returned it
    bool operator==(const CompletedPart&) const = default;
};

/// Sent: all parts have arrived.
struct CompleteAssetRequest {
    std::vector<CompletedPart> parts;
    std::string sha256; ///< of the whole archive
    bool operator==(const CompleteAssetRequest&) const = default;
};

/// The state of a review, with the service's word for it. A word that this version does not know is kept, and means
/// that the service is still checking. A value.
class ReviewStatus {
public:
    enum class Kind { analyzing, reviewPending, approved, rejected, expired };

    ReviewStatus() = default;
    ReviewStatus(std::string word);                                  // NOLINT(google-explicit-constructor): its word
    ReviewStatus(const char* word) : ReviewStatus(std::string(word)) // NOLINT(google-explicit-constructor): its word
    {
    }

    Kind kind() const noexcept { return kind_; }
    bool is(Kind kind) const noexcept { return kind_ == kind; }
    /// Whether the review is over.
    bool isFinal() const noexcept;
    const std::string& word() const noexcept { return word_; }

    bool operator==(const ReviewStatus&) const = default;

private:
    Kind kind_ = Kind::analyzing;
    std::string word_;
};

/// Received: the state of a submission's review.
struct SubmissionStatus {
    std::string id;
    std::string questId;
    ReviewStatus status;
    std::optional<std::string> rejectionReasonKey;
    std::optional<std::string> rewardUsd; ///< dollars as text; the quest's own `rewardUsd` is a number
    std::optional<std::int64_t> assetsRemaining;
    bool operator==(const SubmissionStatus&) const = default;
};

} // namespace vorn
