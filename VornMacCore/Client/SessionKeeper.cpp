#include "VornMacCore/Client/SessionKeeper.h"

#include "Platform/Base/CancelFlag.h"
#include "VornMacCore/Client/APIAnswer.h"

#include <utility>

namespace vorn {

using Method = HTTPRequest::Method;

SessionKeeper::SessionKeeper(APITransport transport, std::shared_ptr<TokenStore> tokens)
    : transport_(std::move(transport)), tokens_(std::move(tokens))
{
}

StoredSession SessionKeeper::current(const std::optional<std::string>& pinnedUserId) const
{
    auto session = tokens_->load();
    if (!session && !pinnedUserId) throw APIError(APIError::NotSignedIn{});
    if (!session || (pinnedUserId && session->userId != *pinnedUserId)) throw APIError(APIError::SessionChanged{});
    return *std::move(session);
}

void SessionKeeper::adopt(const StoredSession& session)
{
    const std::lock_guard lock(storeLock_);
    tokens_->save(session);
}

std::optional<StoredSession> SessionKeeper::forget()
{
    const std::lock_guard lock(storeLock_);
    auto session = tokens_->load();
    tokens_->clear();
    return session;
}

void SessionKeeper::clearIfCurrent(const StoredSession& session)
{
    const std::lock_guard lock(storeLock_);
    const auto stored = tokens_->reload();
    if (stored && stored->refreshToken == session.refreshToken) tokens_->clear();
}

StoredSession SessionKeeper::successor(std::optional<StoredSession> stored, const StoredSession& stale)
{
    if (!stored || stored->userId != stale.userId) throw APIError(APIError::SessionChanged{});
    return *std::move(stored);
}

Async<StoredSession> SessionKeeper::refreshedSession(std::shared_ptr<SessionKeeper> self, StoredSession stale)
{
    const StoredSession stored = successor(self->tokens_->load(), stale);
    if (stored.token != stale.token) co_return stored; // somebody else was faster
    // The refresh that is joined may be of another user, who linked just now.
    co_return successor(co_await self->refresher_.run([self, stored] { return refresh(self, stored); }), stale);
}

Async<StoredSession> SessionKeeper::refresh(std::shared_ptr<SessionKeeper> self, StoredSession stale)
{
    // A caller may have read the store just before another refresh ended, and come here just after it: the token it
    // knows is used up, and offering it again would end the session. So may another process of the user's.
    StoredSession used = successor(self->tokens_->reload(), stale);
    if (used.token != stale.token) co_return used;

    const HTTPResponse response = co_await self->askForPair(used);
    if (!isSuccess(response.status)) co_return self->newerThanRefused(used);
    auto pair = decode<TokenPair>(response, self->transport_.log());
    StoredSession next = used;
    next.token = std::move(pair.token);
    next.refreshToken = std::move(pair.refreshToken);
    co_return self->replace(used, std::move(next));
}

StoredSession SessionKeeper::newerThanRefused(const StoredSession& used)
{
    const std::lock_guard lock(storeLock_);
    const auto known = tokens_->load();
    if (!known || known->refreshToken != used.refreshToken) throw APIError(APIError::SessionExpired{});
    auto stored = tokens_->reload();
    // Another process offered the same token, was faster and has saved what it got.
    if (stored && stored->refreshToken != used.refreshToken) return successor(std::move(stored), used);
    tokens_->clear();
    throw APIError(APIError::SessionExpired{});
}

StoredSession SessionKeeper::replace(const StoredSession& used, StoredSession next)
{
    const std::lock_guard lock(storeLock_);
    const auto stored = tokens_->load();
    if (!stored || stored->refreshToken != used.refreshToken) throw APIError(APIError::SessionChanged{});
    try {
        tokens_->save(next);
    } catch (const std::exception& error) {
        // A store that remembers the session nevertheless is good for this run.
        if (tokens_->load() != next) throw;
        transport_.log().error(std::string("keychain save failed: ") + error.what());
    }
    return next;
}

// POST auth/desktop/refresh
Async<HTTPResponse> SessionKeeper::askForPair(const StoredSession& session) const
{
    return transport_.send({Method::post, "auth/desktop/refresh", toJSON(RefreshRequest{session.refreshToken})},
                           std::nullopt);
}

Async<> SessionKeeper::revoke(std::shared_ptr<SessionKeeper> self, StoredSession session)
{
    try {
        co_await revokeOnce(self, std::move(session));
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        // The session is forgotten here already; the service ends it on its own in time.
        self->transport_.log().error(std::string("logout failed: ") + error.what());
    }
}

// POST auth/desktop/logout
Async<> SessionKeeper::revokeOnce(std::shared_ptr<SessionKeeper> self, StoredSession session)
{
    const APICall logout{Method::post, "auth/desktop/logout", std::nullopt};
    HTTPResponse response = co_await self->transport_.send(logout, session.token);
    if (response.status == 401) {
        const HTTPResponse renewed = co_await self->askForPair(session);
        if (!isSuccess(renewed.status)) co_return; // neither token is good for anything: the session has ended
        auto pair = decode<TokenPair>(renewed, self->transport_.log());
        response = co_await self->transport_.send(logout, std::move(pair.token));
    }
    decode<Revoked>(response, self->transport_.log());
}

} // namespace vorn
