#include "VornSandbox/Service/Sessions.h"

#include "VornSandbox/Service/Secrets.h"
#include "VornSandbox/Service/ServiceError.h"

#include <algorithm>

namespace vorn::sandbox {

Sessions::Sessions(const StateDatabase& state, const Settings& settings) : state_(state), settings_(settings)
{
    for (const std::string& name : settings.users) {
        users_.push_back({.id = "usr_" + std::to_string(users_.size() + 1), .displayName = name});
    }
}

const User& Sessions::user(const std::string& id) const
{
    const auto found = std::ranges::find(users_, id, &User::id);
    if (found == users_.end()) throw ServiceError(404, "unknown_user", "There is no such account.");
    return *found;
}

NewSession Sessions::open(const std::string& userId, const std::string& deviceName)
{
    NewSession session{.tokens = {.token = newSecret(), .refreshToken = newSecret()}, .user = user(userId)};
    state_.run("INSERT INTO session(userId, deviceName, createdAt, accessHash, accessExpiresAt, refreshHash)"
               " VALUES (?, ?, ?, ?, ?, ?)",
               {userId, deviceName, toMilliseconds(state_.now()), hashOf(session.tokens.token),
                toMilliseconds(state_.now() + settings_.tokenLifetime), hashOf(session.tokens.refreshToken)});
    return session;
}

TokenPair Sessions::refresh(const std::string& refreshToken)
{
    const std::string hash = hashOf(refreshToken);
    const auto reused = state_.number("SELECT sessionId FROM usedRefresh WHERE hash = ?", {hash});
    if (reused != 0) {
        state_.run("UPDATE session SET revoked = 1 WHERE id = ?", {reused});
        throw ServiceError(401, "refresh_token_reused", "That refresh token was used before: the session has ended.");
    }
    const auto session = state_.number("SELECT id FROM session WHERE refreshHash = ? AND revoked = 0", {hash});
    if (session == 0) throw ServiceError(401, "bad_refresh_token", "That refresh token is not valid.");
    TokenPair pair{.token = newSecret(), .refreshToken = newSecret()};
    state_.run("INSERT INTO usedRefresh VALUES (?, ?)", {hash, session});
    state_.run("UPDATE session SET accessHash = ?, accessExpiresAt = ?, refreshHash = ? WHERE id = ?",
               {hashOf(pair.token), toMilliseconds(state_.now() + settings_.tokenLifetime), hashOf(pair.refreshToken),
                session});
    return pair;
}

std::int64_t Sessions::idOf(const std::string& accessToken) const
{
    const auto id = state_.number("SELECT id FROM session WHERE accessHash = ? AND revoked = 0", {hashOf(accessToken)});
    if (id == 0) throw ServiceError(401, "bad_token", "That access token is not valid.");
    if (state_.number("SELECT accessExpiresAt FROM session WHERE id = ?", {id}) <= toMilliseconds(state_.now())) {
        throw ServiceError(401, "expired_token", "That access token has expired.");
    }
    return id;
}

const User& Sessions::authenticate(const std::string& accessToken) const
{
    std::string userId;
    state_.query("SELECT userId FROM session WHERE id = ?", {idOf(accessToken)},
                 [&](const SQLiteRow& row) { userId = row.text(0).value_or(""); });
    const auto found = std::ranges::find(users_, userId, &User::id);
    // A kept state may know more accounts than this run was started with.
    if (found == users_.end()) throw ServiceError(401, "bad_token", "The account of that access token is gone.");
    return *found;
}

void Sessions::revoke(const std::string& accessToken)
{
    state_.run("UPDATE session SET revoked = 1 WHERE id = ?", {idOf(accessToken)});
}

std::vector<SessionView> Sessions::active() const
{
    std::vector<SessionView> sessions;
    state_.query("SELECT deviceName, userId, createdAt FROM session WHERE revoked = 0 ORDER BY id DESC", {},
                 [&](const SQLiteRow& row) {
                     const auto found = std::ranges::find(users_, row.text(1).value_or(""), &User::id);
                     if (found == users_.end()) return;
                     sessions.push_back({.deviceName = row.text(0).value_or(""),
                                         .userName = found->displayName,
                                         .linkedAt = fromMilliseconds(row.int64OrZero(2))});
                 });
    return sessions;
}

} // namespace vorn::sandbox
