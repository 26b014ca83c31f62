#include "VornSandbox/Service/APIChecks.h"
#include "VornSandbox/Service/APIRoutes.h"
#include "VornSandbox/Service/Quest.h"
#include "VornSandbox/Service/RequestBody.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::size_t largestBody = 4 * std::size_t{1024} * 1024; ///< 10,000 parts with their ETags fit
constexpr std::int64_t mostURLsAtOnce = 50;
constexpr auto termsVersion = "vorn-mac-nimbrel-1";

std::string userOf(Backend& backend, const Call& call)
{
    const auto lock = backend.state.lock();
    return backend.sessions.authenticate(bearerToken(call)).id;
}

json statusJSON(const Backend& backend, const Submission& submission)
{
    json result{{"id", submission.id},
                {"questId", questId},
                {"status", shownStatus(submission, backend.settings, backend.state.now())},
                {"assetsRemaining", submission.status == "open" || submission.status == "assembling" ? 1 : 0}};
    if (submission.reason) result["rejectionReasonKey"] = *submission.reason;
    // Text here, a number in the quest: that is how the service has it.
    if (submission.status == "approved") result["rewardUsd"] = fmt::format("{:.2f}", backend.settings.rewardUsd);
    return result;
}

json partsJSON(const Backend& backend, const Call& call, const Submission& submission, std::int64_t from,
               std::int64_t count)
{
    const std::string service =
        serviceURL(call.servicePort); // never the client's Host, which is the client's to choose
    json parts = json::array();
    for (const auto& url : backend.submissions.partURLs(submission, from, count)) {
        parts.push_back({{"partNumber", url.number}, {"url", service + url.path}});
    }
    return parts;
}

std::int64_t urlLifetime(const Backend& backend)
{
    return std::chrono::floor<std::chrono::seconds>(backend.settings.urlLifetime).count();
}

SubmissionRequest readSubmissionRequest(const Call& call)
{
    const RequestBody body(call.bodyText(largestBody), {"termsVersion", "sizeBytes", "partCount", "device"});
    if (body.text("termsVersion") != termsVersion) {
        throw ServiceError(422, "unknown_terms", "There are no such terms.");
    }
    SubmissionRequest request{
        .sizeBytes = body.integer("sizeBytes"), .partCount = body.integer("partCount"), .timezone = {}, .locale = {}};
    if (const auto device = body.optionalObject("device", {"timezone", "locale"})) {
        request.timezone = device->text("timezone");
        request.locale = device->text("locale");
    }
    return request;
}

// POST desktop/nimbrel/submissions
Answer create(Backend& backend, const Call& call, const Router::Arguments&)
{
    checkFrame(call, BodyRule::json);
    const std::string user = userOf(backend, call);
    const Submission submission = backend.submissions.create(user, readSubmissionRequest(call));
    const auto first = std::min(backend.settings.initialParts, submission.partCount);
    const json asset{{"assetId", submission.assetId},
                     {"position", 0},
                     {"uploadId", submission.uploadId},
                     {"parts", partsJSON(backend, call, submission, 1, first)}};
    return {.status = 201,
            .body = json{{"submissionId", submission.id},
                         {"questId", questId},
                         {"attempt", submission.attempt},
                         {"assets", json::array({asset})},
                         {"expiresInSeconds", urlLifetime(backend)}}
                        .dump()};
}

// POST desktop/nimbrel/submissions/<id>/assets/<asset>/part-urls
Answer partURLs(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    checkFrame(call, BodyRule::json);
    const Submission submission = backend.submissions.find(userOf(backend, call), ids[0], ids[1]);
    const RequestBody body(call.bodyText(largestBody), {"fromPart", "count"});
    const std::int64_t from = body.integer("fromPart");
    const std::int64_t count = body.integer("count");
    if (from < 1 || from > submission.partCount || count < 1 || count > mostURLsAtOnce ||
        count > submission.partCount - from + 1) {
        throw ServiceError(
            422, "bad_range",
            fmt::format("There are parts 1 to {}, and at most {} URLs at once.", submission.partCount, mostURLsAtOnce));
    }
    return {.body = json{{"submissionId", submission.id},
                         {"assetId", submission.assetId},
                         {"parts", partsJSON(backend, call, submission, from, count)},
                         {"expiresInSeconds", urlLifetime(backend)}}
                        .dump()};
}

// POST desktop/nimbrel/submissions/<id>/assets/<asset>/complete
Answer complete(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    checkFrame(call, BodyRule::json);
    const Submission submission = backend.submissions.find(userOf(backend, call), ids[0], ids[1]);
    const RequestBody body(call.bodyText(largestBody), {"parts", "sha256"});
    std::vector<ReceivedPart> parts;
    for (const RequestBody& part : body.objects("parts", {"partNumber", "etag"})) {
        parts.push_back({.number = part.integer("partNumber"), .etag = part.text("etag")});
    }
    const Submission reviewed = backend.submissions.complete(submission, parts, body.text("sha256"));
    return {.body = statusJSON(backend, reviewed).dump()};
}

// POST desktop/nimbrel/submissions/<id>/abort
Answer abort(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    checkFrame(call, BodyRule::none);
    backend.submissions.abort(userOf(backend, call), ids[0]);
    return {.body = json{{"status", "aborted"}}.dump()};
}

// GET desktop/nimbrel/submissions/<id>
Answer status(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    checkFrame(call, BodyRule::none);
    return {.body = statusJSON(backend, backend.submissions.status(userOf(backend, call), ids[0])).dump()};
}

} // namespace

void addSubmissionRoutes(Router& router, Backend& backend)
{
    const auto add = [&](const char* operation, const char* method, const std::string& path,
                         Answer (*function)(Backend&, const Call&, const Router::Arguments&)) {
        router.add(operation, method, "/api/v1/desktop/nimbrel/submissions" + path,
                   [&backend, function](const Call& call, const Router::Arguments& ids) {
                       return function(backend, call, ids);
                   });
    };
    add("create-submission", "POST", "", create);
    add("part-urls", "POST", "/*/assets/*/part-urls", partURLs);
    add("complete", "POST", "/*/assets/*/complete", complete);
    add("abort", "POST", "/*/abort", abort);
    add("submission", "GET", "/*", status);
}

} // namespace vorn::sandbox
