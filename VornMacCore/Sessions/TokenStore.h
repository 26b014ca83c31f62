#pragma once

#include "VornMacCore/Sessions/StoredSession.h"

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

    /// As `load`, but asks again where another process may have saved meanwhile.
    virtual std::optional<StoredSession> reload() { return load(); }
};

} // namespace vorn
