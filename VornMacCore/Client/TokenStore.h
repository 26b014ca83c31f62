#pragma once

#include "VornMacCore/Client/StoredSession.h"

#include <functional>
#include <optional>

namespace vorn {

/// Where the session is kept. Threads: any.
class TokenStore {
public:
    virtual ~TokenStore() = default;

    /// Returns the session; absent when there is none or it cannot be read.
    virtual std::optional<StoredSession> load() = 0;
    /// Replaces the kept session. Throws the store's errors.
    virtual void save(const StoredSession& session) = 0;
    virtual void clear() noexcept = 0;

    /// Whether `load` never blocks: it asks no keychain, and therefore no user.
    virtual bool answersAtOnce() const { return true; }

    /// As `load`, but gives a user who is asked the time to answer, and throws the store's error if it cannot tell
    /// whether there is a session. May take minutes: call it only from a thread that nothing waits for.
    virtual std::optional<StoredSession> restore() { return load(); }

    /// Clears the session if `matches` returns true for it, and returns the one that stays. Reads as `reload` does, and
    /// waits no longer. `matches` must own what it uses: a call that timed out may still invoke it later.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a store that waits takes it over
    virtual std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches)
    {
        auto stored = reload();
        if (!stored || !matches(*stored)) return stored;
        clear();
        return std::nullopt;
    }

    /// As `load`, but reads anew if another process may have saved meanwhile.
    virtual std::optional<StoredSession> reload() { return load(); }
};

} // namespace vorn
