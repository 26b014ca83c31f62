#pragma once

#include "Platform/Keychain/KeychainError.h"
#include "VornMacCore/Client/TokenStore.h"

#include <optional>

namespace vorn::testing {

/// A store that must ask the user before it can restore its session, and may be refused. In a `ModelFixture` it answers
/// when the background runs. Threads: one.
class AskingTokenStore final : public TokenStore {
public:
    std::optional<StoredSession> session;
    std::optional<KeychainError> refusal; ///< thrown by every `restore`
    int asked = 0;                        ///< calls of `restore`

    bool answersAtOnce() const override { return false; }
    std::optional<StoredSession> restore() override
    {
        ++asked;
        if (refusal) throw KeychainError(*refusal);
        return session;
    }
    std::optional<StoredSession> load() override { return session; }
    void save(const StoredSession& newer) override { session = newer; }
    void clear() noexcept override { session.reset(); }
};

} // namespace vorn::testing
