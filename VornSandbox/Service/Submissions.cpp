#include "VornSandbox/Service/Submissions.h"

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/FileManager.h"
#include "VornSandbox/Service/RequestChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr auto questId = "quest_nimbrel";
constexpr auto termsVersion = "vorn-mac-nimbrel-1";
constexpr std::int64_t mostShown = 20;

ServiceError noSuchSubmission()
{
    return {404, "unknown_submission", "There is no such submission."};
}

json exportGuide()
{
    const json steps = json::array({
        {{"key", "open"}, {"title", "Open Vorn for Mac"}, {"body", "Link it with this phone."}},
        {{"key", "export"}, {"title", "Find your chat"}, {"body", "Vorn reads your chat with Nimbrel, and no other."}},
        {{"key", "upload"}, {"title", "Upload it"}, {"body", "The review takes a few minutes."}},
    });
    return {{"provider", "nimbrel"}, {"providerName", "Nimbrel"}, {"steps", steps}, {"uploadFrom", "mac"}};
}

json reviewView(const ReviewPlan& plan)
{
    switch (plan.kind) {
    case ReviewPlan::Kind::manual: return {{"by", "button"}};
    case ReviewPlan::Kind::checked: return {{"by", "archive"}};
    case ReviewPlan::Kind::fixed: break;
    }
    return {{"by", "plan"}, {"ending", plan.outcome.status}, {"reason", plan.outcome.reason}};
}

} // namespace

Submissions::Submissions(State& state, const Settings& settings, const Accounts& accounts,
                         std::filesystem::path uploads)
    : state_(state), settings_(settings), accounts_(accounts), uploads_(std::move(uploads))
{
    // A service that ended while it was checking an archive did not finish; the Mac may send "complete" again.
    state_.run("UPDATE submission SET status = 'open' WHERE status = 'checking'");
}

std::vector<Route> Submissions::routes()
{
    const auto to = [this](auto method) { return handlerOf(*this, method); };
    return {
        {"quest", "GET", "/api/v1/desktop/nimbrel", to(&Submissions::quest), Frame::bodiless},
        {"create-submission", "POST", "/api/v1/desktop/nimbrel/submissions", to(&Submissions::create), Frame::json},
        {"part-urls", "POST", "/api/v1/desktop/nimbrel/submissions/*/assets/*/part-urls", to(&Submissions::partURLs),
         Frame::json},
        {"complete", "POST", "/api/v1/desktop/nimbrel/submissions/*/assets/*/complete", to(&Submissions::complete),
         Frame::json},
        {"abort", "POST", "/api/v1/desktop/nimbrel/submissions/*/abort", to(&Submissions::abort), Frame::bodiless},
        {"submission", "GET", "/api/v1/desktop/nimbrel/submissions/*", to(&Submissions::status), Frame::bodiless},
        {"put-part", "PUT", "/uploads/*/*", to(&Submissions::putPart)},
        {"phone", "POST", "/phone/submissions/*/outcome", to(&Submissions::decide)},
    };
}

Answer Submissions::quest(const Call& call)
{
    const auto lock = state_.lock();
    settle();
    json quest = standingOf(accounts_.authenticate(call));
    quest.update({{"id", questId},
                  {"title", "Share your chat with Nimbrel"},
                  {"description", "Upload your conversation from your Mac."},
                  {"rewardUsd", settings_.rewardUsd},
                  {"exportGuide", exportGuide()}});
    return Answer::of({{"quest", quest}, {"handles", settings_.handles}, {"maxBytes", settings_.maxBytes}});
}

/// Where an account stands with the quest. Its last upload decides; unfinished and aborted ones do not count.
json Submissions::standingOf(const std::string& userId) const
{
    const auto last = newest(userId, "status NOT IN ('open', 'aborted')");
    if (!last || last->status == "expired") return {{"status", "available"}};
    if (last->status == "approved") {
        return {{"status", "approved"}, {"availableAt", dateText(last->decidedAt + settings_.cooldown.count())}};
    }
    if (last->status != "rejected") return {{"status", "submitted"}};
    json standing{{"status", "rejected"}};
    if (!last->reason.empty()) standing["rejectionReasonKey"] = last->reason;
    return standing;
}

Submissions::Request Submissions::readRequest(const Call& call)
{
    const RequestBody body(call, {"termsVersion", "sizeBytes", "partCount", "device"});
    if (body.text("termsVersion") != termsVersion) {
        throw ServiceError(422, "unknown_terms", "There are no such terms.");
    }
    Request request{.sizeBytes = body.integer("sizeBytes"), .partCount = body.integer("partCount")};
    if (const auto device = body.optionalObject("device", {"timezone", "locale"})) {
        request.timezone = device->text("timezone");
        request.locale = device->text("locale");
    }
    return request;
}

/// Refuses while an upload is in review or the cooldown lasts. A new submission replaces an unfinished one.
Answer Submissions::create(const Call& call)
{
    auto lock = state_.lock();
    const std::string user = accounts_.authenticate(call);
    lock.unlock();
    const Request request = readRequest(call);
    lock.lock();
    settle();
    refuseTooEarly(user);
    refuseWrongPlan(request);
    while (const auto unfinished = newest(user, "status = 'open'")) discard(*unfinished);
    const std::string id = newIdentifier("sub_");
    makeArchive(id);
    state_.run(
        "INSERT INTO submission(id, userId, attempt, assetId, uploadId, sizeBytes, partCount, partSize, timezone,"
        " locale, status, createdAt) VALUES (?1, ?2, (SELECT count(*) + 1 FROM submission WHERE userId = ?2),"
        " ?3, ?4, ?5, ?6, ?7, ?8, ?9, 'open', ?10)",
        {id, user, newIdentifier("ast_"), newIdentifier("upl_"), request.sizeBytes, request.partCount,
         settings_.partSize, orNull(request.timezone), orNull(request.locale), state_.now()});
    const Submission submission = require(id);
    const json asset{{"assetId", submission.assetId},
                     {"position", 0},
                     {"uploadId", submission.uploadId},
                     {"parts", partsJSON(call, submission, 1, std::min(settings_.initialParts, submission.partCount))}};
    return Answer::of({{"submissionId", id},
                       {"questId", questId},
                       {"attempt", submission.attempt},
                       {"assets", json::array({asset})},
                       {"expiresInSeconds", settings_.urlLifetimeSeconds()}},
                      201);
}

void Submissions::refuseTooEarly(const std::string& userId) const
{
    if (newest(userId, "status IN ('review', 'checking')")) {
        throw ServiceError(409, "in_review", "Your last upload is still in review.");
    }
    const auto last = newest(userId, "status IN ('approved', 'rejected', 'expired')");
    if (!last || last->status != "approved") return;
    const std::int64_t next = last->decidedAt + settings_.cooldown.count();
    if (state_.now() < next) {
        throw ServiceError(409, "cooling_down", "The next upload is possible after " + dateText(next) + ".");
    }
}

void Submissions::refuseWrongPlan(const Request& request) const
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

Answer Submissions::abort(const Call& call)
{
    const auto lock = state_.lock();
    const Submission submission = own(call);
    if (submission.isOpen() || submission.status == "checking") {
        discard(submission);
    } else if (submission.status != "aborted") {
        throw ServiceError(409, "already_complete", "The upload is complete and can no longer be aborted.");
    }
    return Answer::of({{"status", "aborted"}});
}

/// Creates the empty archive, into which parts are written at their offsets.
void Submissions::makeArchive(const std::string& id) const
{
    FileManager::standard().createPrivateDirectory(folderOf(id));
    if (createPrivateFile(archiveFile(id))) return;
    throw std::filesystem::filesystem_error("cannot make", archiveFile(id),
                                            std::error_code(errno, std::generic_category()));
}

void Submissions::discard(const Submission& submission)
{
    state_.run("UPDATE submission SET status = 'aborted' WHERE id = ?", {submission.id});
    state_.run("DELETE FROM part WHERE submissionId = ?", {submission.id});
    FileManager::standard().remove(folderOf(submission.id));
}

Answer Submissions::status(const Call& call)
{
    const auto lock = state_.lock();
    settle();
    return Answer::of(statusJSON(own(call)));
}

// POST /phone/submissions/<id>/outcome {"outcome": "approved", "rejected:REASON" or "expired"}
Answer Submissions::decide(const Call& call)
{
    const auto plan = ReviewPlan::parse(RequestBody(call, {"outcome"}).text("outcome"));
    if (!plan || plan->kind != ReviewPlan::Kind::fixed) {
        throw ServiceError(422, "bad_outcome", "That is not how a review can end.");
    }
    const auto lock = state_.lock();
    settle();
    const Submission submission = require(call.arguments[0]);
    if (submission.status != "review") throw ServiceError(409, "not_in_review", "The submission is not in review.");
    state_.run("UPDATE submission SET status = ?, reason = nullif(?, ''), decidedAt = ? WHERE id = ?",
               {plan->outcome.status, plan->outcome.reason, state_.now(), submission.id});
    return Answer::of(json::object());
}

void Submissions::settle()
{
    if (settings_.review.kind == ReviewPlan::Kind::manual) return;
    const std::int64_t lasts = 2 * settings_.reviewStep.count();
    const std::int64_t begunBy = state_.now() - lasts;
    const std::string due = " status = 'review' AND completedAt <= ?1";
    if (!state_.number("SELECT 1 FROM submission WHERE" + due, {begunBy})) return; // nothing changes
    const std::int64_t isChecked = settings_.review.kind == ReviewPlan::Kind::checked ? 1 : 0;
    const auto& [status, reason] = settings_.review.outcome;
    state_.run("UPDATE submission SET decidedAt = completedAt + ?2, status = iif(?3, checkedStatus, ?4),"
               " reason = nullif(iif(?3, checkedReason, ?5), '') WHERE" +
                   due,
               {begunBy, lasts, isChecked, status, reason});
}

/// The status that clients see: "uploading", "analyzing", "review_pending", "approved", "rejected", "expired" or
/// "aborted".
std::string Submissions::shownStatus(const Submission& submission) const
{
    if (submission.isOpen() || submission.status == "checking") return "uploading";
    if (submission.status != "review") return submission.status;
    return state_.now() < submission.completedAt + settings_.reviewStep.count() ? "analyzing" : "review_pending";
}

json Submissions::statusJSON(const Submission& submission) const
{
    const std::string status = shownStatus(submission);
    json result{{"id", submission.id},
                {"questId", questId},
                {"status", status},
                {"assetsRemaining", status == "uploading" ? 1 : 0}};
    if (!submission.reason.empty()) result["rejectionReasonKey"] = submission.reason;
    // A string here but a number in the quest, as in the service itself.
    if (status == "approved") result["rewardUsd"] = fmt::format("{:.2f}", settings_.rewardUsd);
    return result;
}

json Submissions::viewOf(const Submission& submission) const
{
    const char* const parts = "SELECT number FROM part WHERE submissionId = ? ORDER BY number";
    const std::string user = accounts_.nameOf(submission.userId);
    const bool inReview = submission.status == "review";
    const bool decidesByItself = inReview && settings_.review.kind != ReviewPlan::Kind::manual;
    return {{"id", submission.id},
            {"userName", user.empty() ? submission.userId : user},
            {"attempt", submission.attempt},
            {"status", shownStatus(submission)},
            {"reason", submission.reason},
            {"sizeBytes", submission.sizeBytes},
            {"partCount", submission.partCount},
            {"receivedParts", submission.isOpen() ? state_.list(parts, {submission.id}) : json::array()},
            {"createdAt", submission.createdAt},
            {"inReview", inReview},
            {"decidesAt", decidesByItself ? submission.completedAt + 2 * settings_.reviewStep.count() : 0},
            {"hasArchive", submission.hasArchive()},
            {"finding", submission.finding},
            {"rewardUsd", settings_.rewardUsd}};
}

void Submissions::show(json& view) const
{
    view["submissions"] = json::array();
    for (const Submission& submission : select("ORDER BY sequence DESC LIMIT ?", {mostShown})) {
        view["submissions"].push_back(viewOf(submission));
    }
    view["review"] = reviewView(settings_.review);
    view["reasons"] = rejectionReasons;
}

std::vector<Submissions::Submission> Submissions::select(const std::string& where,
                                                         const std::vector<SQLiteValue>& values) const
{
    constexpr auto record =
        "SELECT json_object('id', id, 'userId', userId, 'attempt', attempt, 'assetId', assetId, 'uploadId', uploadId,"
        " 'sizeBytes', sizeBytes, 'partCount', partCount, 'partSize', partSize, 'status', status,"
        " 'reason', ifnull(reason, ''), 'createdAt', createdAt, 'completedAt', ifnull(completedAt, 0),"
        " 'decidedAt', ifnull(decidedAt, 0), 'finding', finding) FROM submission ";
    return state_.list(record + where, values).get<std::vector<Submission>>();
}

/// The user's newest submission that meets `condition`, which is constant SQL over the table's columns.
std::optional<Submissions::Submission> Submissions::newest(const std::string& userId,
                                                           const std::string& condition) const
{
    auto found = select("WHERE userId = ? AND " + condition + " ORDER BY sequence DESC LIMIT 1", {userId});
    return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

Submissions::Submission Submissions::require(const std::string& id) const
{
    auto found = select("WHERE id = ?", {id});
    if (found.empty()) throw noSuchSubmission();
    return std::move(found.front());
}

/// The submission in the call's path, which must be the caller's. An asset in the path must be the submission's.
Submissions::Submission Submissions::own(const Call& call) const
{
    const std::string user = accounts_.authenticate(call);
    Submission submission = require(call.arguments[0]);
    if (submission.userId != user) throw noSuchSubmission();
    if (call.arguments.size() > 1 && call.arguments[1] != submission.assetId) {
        throw ServiceError(404, "unknown_asset", "The submission has no such asset.");
    }
    return submission;
}

bool Submissions::Submission::hasArchive() const
{
    return status == "review" || status == "approved" || status == "rejected" || status == "expired";
}

std::filesystem::path Submissions::archiveOf(const std::string& id) const
{
    if (!require(id).hasArchive()) throw ServiceError(409, "no_archive", "The archive is not there.");
    return archiveFile(id);
}

} // namespace vorn::sandbox
