#include "VornMacCore/Client/SessionKeeper.h"

#include "Platform/Base/CancelFlag.h"
#include "VornMacCore/Client/APIAnswer.h"

#include <utility>

namespace vorn {

using Method = HTTPRequest::Method;

namespace {

/// Returns a predicate that is true for the session with this refresh token.
auto holding(std::string refreshToken)
{
    return [token = std::move(refreshToken)](const StoredSession& session) { return session.refreshToken == token; };
}

} // namespace

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

std::optional<StoredSession> SessionKeeper::forget(const std::string& userId)
{
    const std::lock_guard lock(storeLock_);
    auto session = tokens_->load();
    tokens_->clearIf([userId](const StoredSession& stored) { return stored.userId == userId; });
    if (session && session->userId != userId) session.reset();
    return session;
}

template <class Work, class Result>
Async<Result> SessionKeeper::askStore(std::shared_ptr<SessionKeeper> self, Work work)
{
    auto* const background = self->transport_.background();
    if (background == nullptr) co_return work();
    const auto ask = [&work](const CancelFlag& /*cancel*/) { return work(); };
    co_return co_await onBackground(background, ask);
}

Async<> SessionKeeper::clearIfCurrent(std::shared_ptr<SessionKeeper> self, StoredSession session)
{
    const auto clear = [keeper = self.get(), token = std::move(session.refreshToken)] {
        const std::lock_guard lock(keeper->storeLock_);
        return keeper->tokens_->clearIf(holding(token)).has_value();
    };
    co_await askStore(self, clear);
}

StoredSession SessionKeeper::successor(std::optional<StoredSession> stored, const StoredSession& stale)
{
    if (!stored || stored->userId != stale.userId) throw APIError(APIError::SessionChanged{});
    return *std::move(stored);
}

Async<StoredSession> SessionKeeper::refreshedSession(std::shared_ptr<SessionKeeper> self, StoredSession stale)
{
    const StoredSession stored = successor(self->tokens_->load(), stale);
    if (stored.token != stale.token) co_return stored; // already renewed
    // The refresh that is joined may be for another user, who has just linked.
    co_return successor(co_await self->refresher_.run([self, stored] { return refresh(self, stored); }), stale);
}

Async<StoredSession> SessionKeeper::refresh(std::shared_ptr<SessionKeeper> self, StoredSession stale)
{
    // A caller may have read the store just before another refresh ended, and get here just after: the token it knows
    // is then used up, and offering it again would end the session. The same may happen between two processes of this
    // user.
    const auto read = [keeper = self.get()] { return keeper->tokens_->reload(); };
    StoredSession used = successor(co_await askStore(self, read), stale);
    if (used.token != stale.token) co_return used;

    const HTTPResponse response = co_await self->askForPair(used);
    if (!isSuccess(response.status)) {
        const auto look = [keeper = self.get(), &used] { return keeper->newerThanRefused(used); };
        co_return co_await askStore(self, look);
    }
    auto pair = co_await decodeApart<TokenPair>(response, self->transport_.log(), self->transport_.background());
    StoredSession next = used;
    next.token = std::move(pair.token);
    next.refreshToken = std::move(pair.refreshToken);
    const auto store = [keeper = self.get(), &used, &next] { return keeper->replace(used, next); };
    co_return co_await askStore(self, store);
}

StoredSession SessionKeeper::newerThanRefused(const StoredSession& used)
{
    const std::lock_guard lock(storeLock_);
    const auto known = tokens_->load();
    if (!known || known->refreshToken != used.refreshToken) throw APIError(APIError::SessionExpired{});
    // Another process may have offered the same token first, and saved the new pair.
    if (auto newer = tokens_->clearIf(holding(used.refreshToken))) return successor(std::move(newer), used);
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
        // A store that cached the session despite the error still serves this run.
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
        // The session is already forgotten here; the service lets it expire eventually.
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
        if (!isSuccess(renewed.status)) co_return; // refused as well: the session counts as ended
        auto pair = co_await decodeApart<TokenPair>(renewed, self->transport_.log(), self->transport_.background());
        response = co_await self->transport_.send(logout, std::move(pair.token));
    }
    co_await decodeApart<Revoked>(std::move(response), self->transport_.log(), self->transport_.background());
}

} // namespace vorn
