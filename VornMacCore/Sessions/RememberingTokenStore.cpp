#include "VornMacCore/Sessions/RememberingTokenStore.h"

#include <utility>

namespace vorn {

std::optional<StoredSession> RememberingTokenStore::load()
{
    const std::lock_guard lock(lock_);
    if (!std::exchange(isKnown_, true)) session_ = kept_->load();
    return session_;
}

void RememberingTokenStore::save(const StoredSession& session)
{
    const std::lock_guard lock(lock_);
    isKnown_ = true;
    session_ = session;
    kept_->save(session);
}

void RememberingTokenStore::clear() noexcept
{
    const std::lock_guard lock(lock_);
    isKnown_ = true;
    session_.reset();
    kept_->clear();
}

} // namespace vorn
