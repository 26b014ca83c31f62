#include "VornSandbox/Service/Accounts.h"

#include "VornSandbox/Service/RequestChecks.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr auto codePrefix = std::string_view("vorn://link?code=");

/// The same for an unknown link and for a wrong secret: the answer must not tell which links exist.
ServiceError noSuchLink()
{
    return {404, "unknown_link", "There is no such link."};
}

} // namespace

/// The table of accounts is temporary: a state kept from another run may hold sessions of accounts that this run lacks.
Accounts::Accounts(State& state, const Settings& settings) : state_(state), settings_(settings)
{
    state_.run("CREATE TEMP TABLE user(number INTEGER PRIMARY KEY, id AS ('usr_' || number), name TEXT NOT NULL)");
    for (const std::string& name : settings_.users) state_.run("INSERT INTO user(name) VALUES (?)", {name});
}

std::vector<Route> Accounts::routes()
{
    const auto to = [this](auto method) { return handlerOf(*this, method); };
    return {{"create-link", "POST", "/api/v1/auth/device-links", to(&Accounts::createLink), Frame::tokenless},
            {"poll-link", "POST", "/api/v1/auth/device-links/poll", to(&Accounts::pollLink), Frame::tokenless},
            {"refresh", "POST", "/api/v1/auth/desktop/refresh", to(&Accounts::refresh), Frame::tokenless},
            {"logout", "POST", "/api/v1/auth/desktop/logout", to(&Accounts::logout), Frame::bodiless},
            {"phone", "POST", "/phone/links/scan", to(&Accounts::scanCode)},
            {"phone", "POST", "/phone/links/*/scan", to(&Accounts::scan)},
            {"phone", "POST", "/phone/links/*/approve", to(&Accounts::approve)},
            {"phone", "POST", "/phone/links/*/reject", to(&Accounts::reject)}};
}

std::string Accounts::nameOf(const std::string& userId) const
{
    return state_.text("SELECT name FROM user WHERE id = ?", {userId}).value_or("");
}

Answer Accounts::createLink(const Call& call)
{
    const RequestBody body(call, {"deviceName", "platform", "appVersion", "osVersion"});
    const std::string device = body.text("deviceName");
    const std::string platform = body.text("platform");
    const std::string version = body.text("appVersion");
    const auto system = body.optionalText("osVersion");
    if (device.empty()) throw ServiceError(422, "bad_device_name", "deviceName is empty.");
    if (platform != "macos") throw ServiceError(422, "bad_platform", "platform is not macos.");
    if (version.empty()) throw ServiceError(422, "bad_app_version", "appVersion is empty.");

    const auto lock = state_.lock();
    const std::string id = newIdentifier("lnk_");
    const std::string pollSecret = newSecret();
    const std::string code = newSecret();
    const std::int64_t expiresAt = state_.now() + settings_.linkLifetime.count();
    state_.run(
        "INSERT INTO link(id, pollHash, codeHash, deviceName, platform, appVersion, osVersion, createdAt,"
        " expiresAt, status) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 'pending')",
        {id, hashOf(pollSecret), hashOf(code), device, platform, version, orNull(system), state_.now(), expiresAt});
    return Answer::of({{"linkId", id},
                       {"pollSecret", pollSecret},
                       {"qrPayload", std::string(codePrefix) + code},
                       {"expiresAt", dateText(expiresAt)},
                       {"pollIntervalMs", settings_.pollIntervalMs}},
                      201);
}

/// The first answer after the approval carries the session: it goes only to the holder of the poll secret, and only
/// once.
Answer Accounts::pollLink(const Call& call)
{
    const RequestBody body(call, {"linkId", "pollSecret"});
    const std::string id = body.text("linkId");
    const std::string pollHash = hashOf(body.text("pollSecret"));
    const auto lock = state_.lock();
    if (!state_.number("SELECT 1 FROM link WHERE id = ? AND pollHash = ?", {id, pollHash})) throw noSuchLink();
    if (settings_.autoApprove) advanceByItself(id);
    json answer{{"status", linkStatus(id)}};
    const auto user =
        state_.text("SELECT userId FROM link WHERE id = ? AND status = 'approved' AND NOT delivered", {id});
    if (user) {
        state_.run("UPDATE link SET delivered = 1 WHERE id = ?", {id});
        answer["session"] =
            openSession(*user, state_.text("SELECT deviceName FROM link WHERE id = ?", {id}).value_or(""));
    }
    return Answer::of(answer);
}

void Accounts::advanceByItself(const std::string& linkId)
{
    const std::string status = linkStatus(linkId);
    if (status == "pending") moveLink(linkId, "pending", "scanned");
    if (status == "scanned") approveLink(linkId, "usr_1");
}

std::string Accounts::linkStatus(const std::string& linkId) const
{
    const auto status = state_.text("SELECT CASE WHEN status IN ('pending', 'scanned') AND expiresAt <= ?"
                                    " THEN 'expired' ELSE status END FROM link WHERE id = ?",
                                    {state_.now(), linkId});
    if (!status) throw noSuchLink();
    return *status;
}

void Accounts::moveLink(const std::string& linkId, const std::string& from, const std::string& to)
{
    const std::string status = linkStatus(linkId);
    if (status != from) {
        throw ServiceError(409, "wrong_link_state", fmt::format("The link is {}, not {}.", status, from));
    }
    state_.run("UPDATE link SET status = ? WHERE id = ?", {to, linkId});
}

void Accounts::approveLink(const std::string& linkId, const std::string& userId)
{
    if (nameOf(userId).empty()) throw ServiceError(404, "unknown_user", "There is no such account.");
    moveLink(linkId, "scanned", "approved");
    state_.run("UPDATE link SET userId = ? WHERE id = ?", {userId, linkId});
}

// POST /phone/links/scan {"qrPayload"}
Answer Accounts::scanCode(const Call& call)
{
    const std::string payload = RequestBody(call, {"qrPayload"}).text("qrPayload");
    const bool isCode = payload.starts_with(codePrefix);
    const std::string code = isCode ? payload.substr(codePrefix.size()) : std::string();
    const auto lock = state_.lock();
    const auto id = state_.text("SELECT id FROM link WHERE codeHash = ?", {hashOf(code)});
    if (!id) throw ServiceError(404, "unknown_code", "That is not a code of this service.");
    moveLink(*id, "pending", "scanned");
    return Answer::of({{"linkId", *id}});
}

Answer Accounts::scan(const Call& call)
{
    const auto lock = state_.lock();
    moveLink(call.arguments[0], "pending", "scanned");
    return Answer::of(json::object());
}

// POST /phone/links/<id>/approve {"userId"}
Answer Accounts::approve(const Call& call)
{
    const std::string user = RequestBody(call, {"userId"}).text("userId");
    const auto lock = state_.lock();
    approveLink(call.arguments[0], user);
    return Answer::of(json::object());
}

Answer Accounts::reject(const Call& call)
{
    const auto lock = state_.lock();
    moveLink(call.arguments[0], "scanned", "rejected");
    return Answer::of(json::object());
}

json Accounts::openSession(const std::string& userId, const std::string& deviceName)
{
    const std::string token = newSecret();
    const std::string refreshToken = newSecret();
    state_.run("INSERT INTO session(userId, deviceName, createdAt, accessHash, accessExpiresAt, refreshHash)"
               " VALUES (?, ?, ?, ?, ?, ?)",
               {userId, deviceName, state_.now(), hashOf(token), state_.now() + settings_.tokenLifetime.count(),
                hashOf(refreshToken)});
    return {
        {"token", token}, {"refreshToken", refreshToken}, {"user", {{"id", userId}, {"displayName", nameOf(userId)}}}};
}

Answer Accounts::refresh(const Call& call)
{
    const std::string hash = hashOf(RequestBody(call, {"refreshToken"}).text("refreshToken"));
    const auto lock = state_.lock();
    if (const auto reused = state_.number("SELECT sessionId FROM usedRefresh WHERE hash = ?", {hash})) {
        state_.run("UPDATE session SET revoked = 1 WHERE id = ?", {*reused});
        throw ServiceError(401, "refresh_token_reused", "That refresh token was used before: the session has ended.");
    }
    const auto session = state_.number("SELECT id FROM session WHERE refreshHash = ? AND NOT revoked", {hash});
    if (!session) throw ServiceError(401, "bad_refresh_token", "That refresh token is not valid.");
    const std::string token = newSecret();
    const std::string refreshToken = newSecret();
    state_.run("INSERT INTO usedRefresh VALUES (?, ?)", {hash, *session});
    state_.run("UPDATE session SET accessHash = ?, accessExpiresAt = ?, refreshHash = ? WHERE id = ?",
               {hashOf(token), state_.now() + settings_.tokenLifetime.count(), hashOf(refreshToken), *session});
    return Answer::of({{"token", token}, {"refreshToken", refreshToken}});
}

Answer Accounts::logout(const Call& call)
{
    const auto lock = state_.lock();
    state_.run("UPDATE session SET revoked = 1 WHERE id = ?", {sessionOf(call)});
    return Answer::of({{"status", "revoked"}});
}

std::int64_t Accounts::sessionOf(const Call& call) const
{
    const auto id =
        state_.number("SELECT id FROM session WHERE accessHash = ? AND NOT revoked", {hashOf(bearerToken(call))});
    if (!id) throw ServiceError(401, "bad_token", "That access token is not valid.");
    if (!state_.number("SELECT 1 FROM session WHERE id = ? AND accessExpiresAt > ?", {*id, state_.now()})) {
        throw ServiceError(401, "expired_token", "That access token has expired.");
    }
    return *id;
}

std::string Accounts::authenticate(const Call& call) const
{
    const auto user = state_.text("SELECT user.id FROM session JOIN user ON user.id = userId WHERE session.id = ?",
                                  {sessionOf(call)});
    if (!user) throw ServiceError(401, "bad_token", "The account of that access token is gone.");
    return *user;
}

void Accounts::show(json& view) const
{
    view["users"] = state_.list("SELECT json_object('id', id, 'name', name) FROM user ORDER BY number");
    view["links"] =
        state_.list("SELECT json_object('id', id, 'deviceName', deviceName, 'osVersion', ifnull(osVersion, ''),"
                    " 'appVersion', appVersion, 'status', status, 'expiresAt', expiresAt) FROM link"
                    " WHERE status IN ('pending', 'scanned') AND expiresAt > ? ORDER BY sequence DESC",
                    {state_.now()});
    view["macs"] =
        state_.list("SELECT json_object('deviceName', deviceName, 'userName', user.name, 'linkedAt', createdAt)"
                    " FROM session JOIN user ON user.id = userId WHERE NOT revoked ORDER BY session.id DESC");
}

} // namespace vorn::sandbox
