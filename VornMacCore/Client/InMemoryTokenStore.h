#pragma once

#include "VornMacCore/Client/TokenStore.h"

#include <mutex>

namespace vorn {

/// Keeps the session only as long as the process runs.
class InMemoryTokenStore final : public TokenStore {
public:
    explicit InMemoryTokenStore(std::optional<StoredSession> session = std::nullopt) : session_(std::move(session)) {}

    std::optional<StoredSession> load() override
    {
        const std::lock_guard lock(lock_);
        return session_;
    }
    void save(const StoredSession& session) override
    {
        const std::lock_guard lock(lock_);
        session_ = session;
    }
    void clear() noexcept override
    {
        const std::lock_guard lock(lock_);
        session_.reset();
    }

private:
    std::mutex lock_; ///< guards session_
    std::optional<StoredSession> session_;
};

} // namespace vorn
