#pragma once

#include "VornMacCore/Sessions/StoredSession.h"

#include <functional>
#include <optional>

namespace vorn {

/// Where the session is kept. Threads: any.
class TokenStore {
public:
    virtual ~TokenStore() = default;

    /// The session; nothing when there is none, and when there is any trouble with it.
    virtual std::optional<StoredSession> load() = 0;
    /// Replaces what was kept. Throws what the store throws.
    virtual void save(const StoredSession& session) = 0;
    virtual void clear() noexcept = 0;

    /// Clears the session if `matches` says so of it, and gives the one that stays: asks as `reload` does, and waits no
    /// longer. `matches` owns what it uses: a store that was too slow may still ask it.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a store that waits takes it over
    virtual std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches)
    {
        auto stored = reload();
        if (!stored || !matches(*stored)) return stored;
        clear();
        return std::nullopt;
    }

    /// As `load`, but asks again where another process may have saved meanwhile.
    virtual std::optional<StoredSession> reload() { return load(); }
};

} // namespace vorn
