#pragma once

#include "VornMacCore/Sessions/TokenStore.h"

#include <memory>
#include <mutex>

namespace vorn {

/// Remembers for this process what another store keeps between runs: a save that fails there must not sign the user out
/// at once, and a store that is slow to ask is asked once.
class RememberingTokenStore final : public TokenStore {
public:
    explicit RememberingTokenStore(std::shared_ptr<TokenStore> kept) : kept_(std::move(kept)) {}

    /// What was saved last in this process; before that, what is kept. Nothing after a `clear`, even if the store below
    /// could not let go of its session.
    std::optional<StoredSession> load() override;
    /// Remembers, then keeps. Throws what keeping throws; the session is remembered nevertheless.
    void save(const StoredSession& session) override;
    void clear() noexcept override;

private:
    std::shared_ptr<TokenStore> kept_;
    std::mutex lock_; ///< guards what follows, and keeps changes of both stores in one order
    bool isKnown_ = false;
    std::optional<StoredSession> session_;
};

} // namespace vorn
