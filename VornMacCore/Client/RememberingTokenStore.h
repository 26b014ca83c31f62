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
    /// Caches, then keeps. Throws what keeping throws; the session stays cached all the same.
    void save(const StoredSession& session) override;
    void clear() noexcept override;
    /// Of what is kept, if that is in step with this process; else of what is remembered.
    std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches) override;
    /// What is kept, if that is a session and in step with this process: another process of the user's renews the
    /// session too, and what is remembered is used up then. Else what is remembered.
    std::optional<StoredSession> reload() override;

private:
    /// What this process knows.
    struct Known {
        std::optional<StoredSession> session;
        bool isKept = true; ///< the store below took it, so what is kept is as new or newer
    };

    std::optional<Known> known() const;
    /// Whether another process may have kept something newer than `remembered`.
    static bool mayBeOutdated(const std::optional<Known>& remembered);
    void know(Known known);
    /// What is known, else what `ask` gets from the store below.
    std::optional<StoredSession> knownOr(std::optional<StoredSession> (TokenStore::*ask)());
    /// Asks the store below, and remembers what it has. With `keptLock_` held.
    std::optional<StoredSession> readKept(std::optional<StoredSession> (TokenStore::*ask)() = &TokenStore::load);

    std::shared_ptr<TokenStore> kept_;
    std::mutex keptLock_;     ///< keeps changes of both stores in one order; held while the store below is asked
    mutable std::mutex lock_; ///< guards what follows; taken within `keptLock_`, never held while waiting
    std::optional<Known> known_;
};

} // namespace vorn
