#include "bench/Window/NearService.h"

#include "Platform/Base/Dates.h"

#include <chrono>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;

constexpr auto roundTrip = 150ms; // time for the waiting screen to come to rest
constexpr auto lifetimeOfCode = 10min;
constexpr int progressReports = 20;
constexpr auto betweenReports = 250ms; // the easing of the bar, and a pause

constexpr const char* questPath = "/desktop/nimbrel";
constexpr const char* quest =
    R"({{"quest":{{"id":"quest-1","rewardUsd":12.5,"status":"available"}},"handles":["{}"],"maxBytes":5000000000}})";
constexpr const char* opened =
    R"({"submissionId":"sub-1","questId":"quest-1","attempt":1,"expiresInSeconds":3600,"assets":[
        {"assetId":"asset-1","position":0,"uploadId":"upload-1","parts":[
            {"partNumber":1,"url":"https://storage.example.com/part/1"}]}]})";
constexpr const char* submission =
    R"({{"id":"sub-1","questId":"quest-1","status":"{}","rejectionReasonKey":null,"rewardUsd":null,"assetsRemaining":0}})";

std::string code(Instant now)
{
    return fmt::format(
        R"({{"linkId":"link-1","pollSecret":"secret","qrPayload":"{}","expiresAt":"{}","pollIntervalMs":2000}})",
        "vorn://link/AbCdEfGhIjKlMnOpQrStUvWxYz0123456789", internetDateTime(now + lifetimeOfCode));
}

} // namespace

Async<HTTPResponse> NearService::send(HTTPRequest request)
{
    if (request.method == HTTPRequest::Method::put) return take(std::move(request));
    return answer(request.url.path());
}

Async<HTTPResponse> NearService::answer(std::string path)
{
    co_await clock_.sleep(path.ends_with(questPath) ? options_.questTakes : Clock::Duration(roundTrip));
    co_return HTTPResponse{200, {{"Content-Type", "application/json"}}, answerTo(path)};
}

std::string NearService::answerTo(const std::string& path) const
{
    const std::string_view end = path;
    if (end.ends_with("/device-links")) return code(clock_.date());
    if (end.ends_with("/device-links/poll")) return R"({"status":"pending"})";
    if (end.ends_with(questPath)) return fmt::format(quest, handle);
    if (end.ends_with("/submissions")) return opened;
    const bool isPoll = end.ends_with("/sub-1");
    return fmt::format(submission, options_.approves && isPoll ? "approved" : "analyzing");
}

Async<HTTPResponse> NearService::take(HTTPRequest part)
{
    for (int report = 1; report <= progressReports; ++report) {
        co_await clock_.sleep(betweenReports);
        part.onBodyProgress(part.body->size() * report / progressReports);
    }
    co_return HTTPResponse{200, {{"ETag", "\"tag-1\""}}, ""};
}

} // namespace vorn::bench
