#pragma once

#include "VornMacCore/Client/APITransport.h"
#include "VornMacCore/Client/RefreshCoordinator.h"
#include "VornMacCore/Client/TokenStore.h"

#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>

namespace vorn {

/// Holds the session for all copies of a client: decides which one a request uses, renews a refused one once for all
/// callers, and ends it. Threads: any. Every read-modify-write of the store happens under one lock, which is never held
/// while waiting for the service. The store may wait for a keychain: renewing and clearing use it on the transport's
/// background; `current`, `adopt` and `forget` use it where they are called.
class SessionKeeper {
public:
    SessionKeeper(APITransport transport, std::shared_ptr<TokenStore> tokens);

    /// Returns the session of the user `pinnedUserId`, or of any user if that is absent. Throws `APIError` if no one,
    /// or another user, is signed in.
    StoredSession current(const std::optional<std::string>& pinnedUserId) const;

    void adopt(const StoredSession& session);
    std::optional<StoredSession> forget();
    /// Forgets the session if it belongs to the user `userId`, and returns it.
    std::optional<StoredSession> forget(const std::string& userId);
    /// Clears the store if it still holds `session`.
    static Async<> clearIfCurrent(std::shared_ptr<SessionKeeper> self, StoredSession session);

    /// A session newer than `stale`, which the service refused: the stored one if it is newer already, else the result
    /// of the one refresh that all callers share. Throws `APIError`, `URLError`, what the store throws.
    static Async<StoredSession> refreshedSession(std::shared_ptr<SessionKeeper> self, StoredSession stale);

    /// Tells the service that `session` has ended. Failures are logged; only `Cancelled` is thrown.
    static Async<> revoke(std::shared_ptr<SessionKeeper> self, StoredSession session);

private:
    /// Returns `stored` if it still belongs to the user of `stale`. Throws `APIError`.
    static StoredSession successor(std::optional<StoredSession> stored, const StoredSession& stale);
    /// Runs `work`, which uses the store, on the transport's background; without one, where the call runs.
    template <class Work, class Result = std::invoke_result_t<Work&>>
    static Async<Result> askStore(std::shared_ptr<SessionKeeper> self, Work work);
    static Async<StoredSession> refresh(std::shared_ptr<SessionKeeper> self, StoredSession stale);
    /// After the service refused to renew `used`, returns the session that another process stored in its place. Without
    /// one, forgets `used` and throws `APIError`.
    StoredSession newerThanRefused(const StoredSession& used);
    /// Stores and returns `next`. Throws `APIError` if the user signed out, or in again, since `used` was read.
    StoredSession replace(const StoredSession& used, StoredSession next);
    Async<HTTPResponse> askForPair(const StoredSession& session) const;
    static Async<> revokeOnce(std::shared_ptr<SessionKeeper> self, StoredSession session);

    APITransport transport_;
    std::shared_ptr<TokenStore> tokens_;
    RefreshCoordinator refresher_;
    std::mutex storeLock_;
};

} // namespace vorn
