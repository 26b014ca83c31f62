#include "VornSandbox/Service/APIRoutes.h"

#include "VornSandbox/Service/APIChecks.h"
#include "VornSandbox/Service/Quest.h"
#include "VornSandbox/Service/RequestBody.h"
#include "VornSandbox/Service/ServiceError.h"

#include <nlohmann/json.hpp>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::size_t largestBody = 64 * std::size_t{1024};

Answer answer(int status, const json& body)
{
    return {.status = status, .body = body.dump()};
}

json toJSON(const NewSession& session)
{
    return {{"token", session.tokens.token},
            {"refreshToken", session.tokens.refreshToken},
            {"user", {{"id", session.user.id}, {"displayName", session.user.displayName}}}};
}

LinkRequest readLinkRequest(const Call& call)
{
    const RequestBody body(call.bodyText(largestBody), {"deviceName", "platform", "appVersion", "osVersion"});
    LinkRequest request{.deviceName = body.text("deviceName"),
                        .platform = body.text("platform"),
                        .appVersion = body.text("appVersion"),
                        .osVersion = body.optionalText("osVersion")};
    if (request.deviceName.empty()) throw ServiceError(422, "bad_device_name", "deviceName is empty.");
    if (request.platform != "macos") throw ServiceError(422, "bad_platform", "platform is not macos.");
    if (request.appVersion.empty()) throw ServiceError(422, "bad_app_version", "appVersion is empty.");
    return request;
}

// POST auth/device-links
Answer createLink(Backend& backend, const Call& call)
{
    refuseToken(call);
    checkFrame(call, BodyRule::json);
    const LinkRequest request = readLinkRequest(call);
    const auto lock = backend.state.lock();
    const NewLink link = backend.links.create(request);
    return answer(201, {{"linkId", link.linkId},
                        {"pollSecret", link.pollSecret},
                        {"qrPayload", link.qrPayload},
                        {"expiresAt", internetDateTime(link.expiresAt)},
                        {"pollIntervalMs", backend.settings.pollIntervalMs}});
}

// POST auth/device-links/poll
Answer pollLink(Backend& backend, const Call& call)
{
    refuseToken(call);
    checkFrame(call, BodyRule::json);
    const RequestBody body(call.bodyText(largestBody), {"linkId", "pollSecret"});
    const auto lock = backend.state.lock();
    const LinkPoll poll = backend.links.poll(body.text("linkId"), body.text("pollSecret"));
    json result{{"status", poll.status}};
    if (poll.session) result["session"] = toJSON(*poll.session);
    return answer(200, result);
}

// POST auth/desktop/refresh
Answer refresh(Backend& backend, const Call& call)
{
    refuseToken(call);
    checkFrame(call, BodyRule::json);
    const RequestBody body(call.bodyText(largestBody), {"refreshToken"});
    const auto lock = backend.state.lock();
    const TokenPair pair = backend.sessions.refresh(body.text("refreshToken"));
    return answer(200, {{"token", pair.token}, {"refreshToken", pair.refreshToken}});
}

// POST auth/desktop/logout
Answer logout(Backend& backend, const Call& call)
{
    checkFrame(call, BodyRule::none);
    const auto lock = backend.state.lock();
    backend.sessions.revoke(bearerToken(call));
    return answer(200, {{"status", "revoked"}});
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

json questJSON(const Settings& settings, const QuestStanding& standing)
{
    json quest{{"id", questId},
               {"title", "Share your chat with Nimbrel"},
               {"description", "Upload your conversation from your Mac."},
               {"rewardUsd", settings.rewardUsd},
               {"status", standing.status},
               {"exportGuide", exportGuide()}};
    if (standing.rejectionReasonKey) quest["rejectionReasonKey"] = *standing.rejectionReasonKey;
    if (standing.availableAt) quest["availableAt"] = internetDateTime(*standing.availableAt);
    return quest;
}

// GET desktop/nimbrel
Answer quest(Backend& backend, const Call& call)
{
    checkFrame(call, BodyRule::none);
    backend.submissions.settle();
    const auto lock = backend.state.lock();
    const User& user = backend.sessions.authenticate(bearerToken(call));
    const QuestStanding standing = questStanding(backend.state, backend.settings, user.id);
    return answer(200, {{"quest", questJSON(backend.settings, standing)},
                        {"handles", backend.settings.handles},
                        {"maxBytes", backend.settings.maxBytes}});
}

} // namespace

void addAccountRoutes(Router& router, Backend& backend)
{
    const auto add = [&](const char* operation, const char* method, const std::string& path,
                         Answer (*function)(Backend&, const Call&)) {
        router.add(
            operation, method, "/api/v1/" + path,
            [&backend, function](const Call& call, const Router::Arguments&) { return function(backend, call); });
    };
    add("create-link", "POST", "auth/device-links", createLink);
    add("poll-link", "POST", "auth/device-links/poll", pollLink);
    add("refresh", "POST", "auth/desktop/refresh", refresh);
    add("logout", "POST", "auth/desktop/logout", logout);
    add("quest", "GET", "desktop/nimbrel", quest);
}

} // namespace vorn::sandbox
