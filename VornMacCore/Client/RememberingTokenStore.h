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

    /// Returns what was saved last in this process; before that, what is kept. Absent after a `clear`, even if the
    /// store below failed to remove its session. An absent session is not cached: a locked keychain may be unlocked
    /// later.
    std::optional<StoredSession> load() override;
    /// True once a session is cached.
    bool answersAtOnce() const override { return known().has_value(); }
    std::optional<StoredSession> restore() override;
    /// Caches, then keeps. Throws the failure to keep; the session stays cached even so.
    void save(const StoredSession& session) override;
    void clear() noexcept override;
    /// Of the kept session, if that is in step with this process; otherwise of the remembered one.
    std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches) override;
    /// The kept session, if there is one and it is in step with this process: another process of this user may have
    /// renewed it, which uses up the remembered one. Otherwise the remembered one.
    std::optional<StoredSession> reload() override;

private:
    /// What this process knows.
    struct Known {
        std::optional<StoredSession> session;
        bool isKept = true; ///< the store below took it, so the kept one is as new or newer
    };

    std::optional<Known> known() const;
    /// Whether another process may have kept something newer than `remembered`.
    static bool mayBeOutdated(const std::optional<Known>& remembered);
    void know(Known known);
    /// The known session, else the result of `ask` on the store below.
    std::optional<StoredSession> knownOr(std::optional<StoredSession> (TokenStore::*ask)());
    /// Asks the store below, and remembers its session. Requires `keptLock_`.
    std::optional<StoredSession> readKept(std::optional<StoredSession> (TokenStore::*ask)() = &TokenStore::load);

    std::shared_ptr<TokenStore> kept_;
    std::mutex keptLock_;     ///< keeps changes of both stores in one order; held while the store below is asked
    mutable std::mutex lock_; ///< guards what follows; taken within `keptLock_`, never held while waiting
    std::optional<Known> known_;
};

} // namespace vorn
