#pragma once

#include "VornMacCore/Client/TokenStore.h"

#include <memory>
#include <mutex>

namespace vorn {

/// Caches in this process what another store keeps between runs: a save that fails there must not sign the user out at
/// once, and a slow store is asked only once for a session. Once one is known, `load` never blocks.
class RememberingTokenStore final : public TokenStore {
public:
    explicit RememberingTokenStore(std::shared_ptr<TokenStore> kept) : kept_(std::move(kept)) {}

    /// Returns the session that this process saved or read last; before that, the one in the store below. Absent after
    /// a `clear`, even if the store below failed to remove its session. Finding none there is not cached: a locked
    /// keychain may be unlocked later.
    std::optional<StoredSession> load() override;
    /// True once a session is cached.
    bool answersAtOnce() const override { return known().has_value(); }
    std::optional<StoredSession> restore() override;
    /// Caches the session, then saves it in the store below. Throws that store's error; the session stays cached even
    /// so.
    void save(const StoredSession& session) override;
    void clear() noexcept override;
    /// Applies to the session in the store below if that is at least as new as the cached one; otherwise to the cached
    /// one.
    std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches) override;
    /// Returns the session in the store below if there is one and it is at least as new as the cached one: another
    /// process of this user may have renewed it, which uses up the cached one. Otherwise returns the cached one.
    std::optional<StoredSession> reload() override;

private:
    /// What this process knows.
    struct Known {
        std::optional<StoredSession> session;
        bool isKept = true; ///< the store below took it, so its own is as new or newer
    };

    std::optional<Known> known() const;
    /// Whether another process may have saved something newer than `remembered` in the store below.
    static bool mayBeOutdated(const std::optional<Known>& remembered);
    void know(Known known);
    /// The known session, else the result of `ask` on the store below.
    std::optional<StoredSession> knownOr(std::optional<StoredSession> (TokenStore::*ask)());
    /// Asks the store below, and remembers its session. Requires `keptLock_`.
    std::optional<StoredSession> readKept(std::optional<StoredSession> (TokenStore::*ask)() = &TokenStore::load);

    std::shared_ptr<TokenStore> kept_;
    std::mutex keptLock_;     ///< orders changes of both stores; held while the store below is used
    mutable std::mutex lock_; ///< guards what follows; may be taken within `keptLock_`; never held while waiting
    std::optional<Known> known_;
};

} // namespace vorn
