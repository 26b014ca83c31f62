#pragma once

#include "VornSandbox/Service/ArchiveFolder.h"
#include "VornSandbox/Service/PartSigner.h"
#include "VornSandbox/Service/ReviewPlan.h"
#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"
#include "VornSandbox/Service/Submission.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// What the Mac says when it opens a submission.
struct SubmissionRequest {
    std::int64_t sizeBytes = 0;
    std::int64_t partCount = 0;
    std::optional<std::string> timezone;
    std::optional<std::string> locale;
};

/// What reading an archive finds: `asChecked` is how a strict review would end.
struct ArchiveVerdict {
    Outcome asChecked;
    std::string finding; ///< one sentence for people
};

/// Opens, fills, completes and reviews submissions.
/// Threads: any; unlike the rest of the state, it takes the state's lock itself, so that it is never held while a file
/// is read or written. Errors: `ServiceError`.
class Submissions {
public:
    /// Reads an archive that has arrived whole.
    using Inspector = std::function<ArchiveVerdict(const std::filesystem::path& archive)>;

    Submissions(const StateDatabase& state, const Settings& settings, ArchiveFolder& files, Inspector inspect);

    /// Refused while one is in review or cooling down; an unfinished upload makes room for the new one.
    Submission create(const std::string& userId, const SubmissionRequest& request);

    /// The account's submission with that asset; throws a 404.
    Submission find(const std::string& userId, const std::string& id, const std::string& assetId) const;

    /// The submission as it is now: a review whose time has come is decided.
    Submission status(const std::string& userId, const std::string& id);

    struct PartURL {
        std::int64_t number = 0;
        std::string path; ///< with a query that must not be logged
    };
    std::vector<PartURL> partURLs(const Submission& submission, std::int64_t from, std::int64_t count) const;

    /// Checks that a part may be put there and says how many bytes it must have.
    struct ExpectedPart {
        Submission submission;
        std::int64_t number = 0;
        std::int64_t size = 0;
    };
    ExpectedPart expectPart(const std::string& assetId, const std::string& number, const std::string& expires,
                            const std::string& signature) const;
    std::unique_ptr<IncomingPart> receive(const ExpectedPart& part);
    /// Keeps what was received; returns its ETag.
    std::string keep(const ExpectedPart& part, IncomingPart& received);

    Submission complete(const Submission& submission, const std::vector<ReceivedPart>& parts,
                        const std::string& sha256);
    void abort(const std::string& userId, const std::string& id);

    /// Ends a review, as somebody pressed a button.
    void decide(const std::string& id, const Outcome& outcome);

    /// Decides every review whose time has come.
    void settle();

private:
    Submission require(const std::string& id) const;
    void refuseTooEarly(const std::string& userId) const;
    void refuseWrongPlan(const SubmissionRequest& request) const;
    void replaceUnfinished(const std::string& userId);
    void beginAssembling(const Submission& submission, const std::vector<ReceivedPart>& parts,
                         const std::string& sha256);
    Submission beginReview(const Submission& submission, const std::string& sha256, const ArchiveVerdict& verdict);
    void reopen(const std::string& id);
    void settleLocked();
    void store(const std::string& id, const Outcome& outcome, Instant at);

    const StateDatabase& state_;
    const Settings& settings_;
    ArchiveFolder& files_;
    Inspector inspect_;
    PartSigner signer_;
};

/// The status that the API shows: "uploading", "analyzing", "review_pending", "approved", "rejected", "expired",
/// "aborted".
std::string shownStatus(const Submission& submission, const Settings& settings, Instant now);

} // namespace vorn::sandbox
