#include "VornSandbox/Service/Submissions.h"

#include "VornSandbox/Service/Secrets.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

SQLiteValue orNull(const std::optional<std::string>& text)
{
    return text ? SQLiteValue(*text) : SQLiteValue(nullptr);
}

SQLiteValue orNull(const std::string& text)
{
    return text.empty() ? SQLiteValue(nullptr) : SQLiteValue(text);
}

ServiceError noSuchSubmission()
{
    return {404, "unknown_submission", "There is no such submission."};
}

} // namespace

Submissions::Submissions(const StateDatabase& state, const Settings& settings, ArchiveFolder& files, Inspector inspect)
    : state_(state), settings_(settings), files_(files), inspect_(std::move(inspect)), signer_(state, settings)
{
    // A service that ended while it joined parts left that undone; the Mac may complete again.
    state_.run("UPDATE submission SET status = 'open' WHERE status = 'assembling'");
}

Submission Submissions::create(const std::string& userId, const SubmissionRequest& request)
{
    const auto lock = state_.lock();
    settleLocked();
    refuseTooEarly(userId);
    refuseWrongPlan(request);
    replaceUnfinished(userId);
    const std::string id = newIdentifier("sub_");
    const auto attempt = state_.number("SELECT count(*) FROM submission WHERE userId = ?", {userId}) + 1;
    state_.run(
        "INSERT INTO submission(id, userId, attempt, assetId, uploadId, sizeBytes, partCount, partSize, timezone,"
        " locale, status, createdAt) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 'open', ?)",
        {id, userId, attempt, newIdentifier("ast_"), newIdentifier("upl_"), request.sizeBytes, request.partCount,
         settings_.partSize, orNull(request.timezone), orNull(request.locale), toMilliseconds(state_.now())});
    return require(id);
}

void Submissions::refuseTooEarly(const std::string& userId) const
{
    if (newestSubmission(state_, userId, "status IN ('review', 'assembling')")) {
        throw ServiceError(409, "in_review", "Your last upload is still in review.");
    }
    const auto last = newestSubmission(state_, userId, "status IN ('approved', 'rejected', 'expired')");
    if (last && last->status == "approved" && state_.now() < last->decidedAt + settings_.cooldown) {
        throw ServiceError(409, "cooling_down",
                           "The next upload is possible after " +
                               internetDateTime(last->decidedAt + settings_.cooldown));
    }
}

void Submissions::refuseWrongPlan(const SubmissionRequest& request) const
{
    if (request.sizeBytes < 0) throw ServiceError(422, "bad_size", "sizeBytes is negative.");
    if (request.sizeBytes > settings_.maxBytes) {
        throw ServiceError(413, "too_large",
                           fmt::format("An archive may have {} bytes, not {}.", settings_.maxBytes, request.sizeBytes));
    }
    const auto parts = std::max<std::int64_t>(1, (request.sizeBytes + settings_.partSize - 1) / settings_.partSize);
    if (request.partCount != parts) {
        throw ServiceError(422, "bad_part_count",
                           fmt::format("{} bytes are {} parts, not {}.", request.sizeBytes, parts, request.partCount));
    }
}

void Submissions::replaceUnfinished(const std::string& userId)
{
    while (const auto unfinished = newestSubmission(state_, userId, "status = 'open'")) {
        state_.run("UPDATE submission SET status = 'aborted' WHERE id = ?", {unfinished->id});
        state_.run("DELETE FROM part WHERE submissionId = ?", {unfinished->id});
        files_.removeAll(unfinished->id);
    }
}

Submission Submissions::require(const std::string& id) const
{
    auto submission = findSubmission(state_, id);
    if (!submission) throw noSuchSubmission();
    return *std::move(submission);
}

Submission Submissions::find(const std::string& userId, const std::string& id, const std::string& assetId) const
{
    const auto lock = state_.lock();
    Submission submission = require(id);
    if (submission.userId != userId) throw noSuchSubmission();
    if (submission.assetId != assetId) throw ServiceError(404, "unknown_asset", "The submission has no such asset.");
    return submission;
}

Submission Submissions::status(const std::string& userId, const std::string& id)
{
    const auto lock = state_.lock();
    settleLocked();
    Submission submission = require(id);
    if (submission.userId != userId) throw noSuchSubmission();
    return submission;
}

void Submissions::abort(const std::string& userId, const std::string& id)
{
    const auto lock = state_.lock();
    const Submission submission = require(id);
    if (submission.userId != userId) throw noSuchSubmission();
    if (submission.status == "aborted") return;
    if (submission.status != "open" && submission.status != "assembling") {
        throw ServiceError(409, "already_complete", "The upload is complete and can no longer be aborted.");
    }
    state_.run("UPDATE submission SET status = 'aborted' WHERE id = ?", {id});
    state_.run("DELETE FROM part WHERE submissionId = ?", {id});
    files_.removeAll(id);
}

void Submissions::decide(const std::string& id, const Outcome& outcome)
{
    if (!isValid(outcome)) throw ServiceError(422, "bad_outcome", "That is not how a review can end.");
    const auto lock = state_.lock();
    settleLocked();
    if (require(id).status != "review") throw ServiceError(409, "not_in_review", "The submission is not in review.");
    store(id, outcome, state_.now());
}

void Submissions::settle()
{
    const auto lock = state_.lock();
    settleLocked();
}

void Submissions::settleLocked()
{
    if (settings_.review.kind == ReviewPlan::Kind::manual) return;
    struct Due {
        std::string id;
        Outcome outcome;
        Instant at;
    };
    std::vector<Due> due;
    const Instant begunBy = state_.now() - 2 * settings_.reviewStep;
    state_.query("SELECT id, completedAt, checkedStatus, checkedReason FROM submission"
                 " WHERE status = 'review' AND completedAt <= ?",
                 {toMilliseconds(begunBy)}, [&](const SQLiteRow& row) {
                     const Outcome checked{.status = row.text(2).value_or(""), .reason = row.text(3).value_or("")};
                     due.push_back({.id = row.text(0).value_or(""),
                                    .outcome = settings_.review.kind == ReviewPlan::Kind::checked
                                                   ? checked
                                                   : settings_.review.outcome,
                                    .at = fromMilliseconds(row.int64OrZero(1)) + 2 * settings_.reviewStep});
                 });
    for (const Due& review : due) store(review.id, review.outcome, review.at);
}

void Submissions::store(const std::string& id, const Outcome& outcome, Instant at)
{
    state_.run("UPDATE submission SET status = ?, reason = ?, decidedAt = ? WHERE id = ?",
               {outcome.status, orNull(outcome.reason), toMilliseconds(at), id});
}

std::string shownStatus(const Submission& submission, const Settings& settings, Instant now)
{
    if (submission.status == "open" || submission.status == "assembling") return "uploading";
    if (submission.status != "review") return submission.status;
    return now < submission.completedAt + settings.reviewStep ? "analyzing" : "review_pending";
}

} // namespace vorn::sandbox
