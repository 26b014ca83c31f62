#include "VornMacCore/Sessions/RememberingTokenStore.h"

#include <utility>

namespace vorn {

std::optional<RememberingTokenStore::Known> RememberingTokenStore::known() const
{
    const std::lock_guard lock(lock_);
    return known_;
}

void RememberingTokenStore::know(Known known)
{
    const std::lock_guard lock(lock_);
    known_ = std::move(known);
}

std::optional<StoredSession> RememberingTokenStore::load()
{
    if (const auto remembered = known()) return remembered->session;
    const std::lock_guard order(keptLock_);
    // Threads that asked together wait above for the first of them; what it found is theirs too.
    if (const auto remembered = known()) return remembered->session;
    return readKept();
}

std::optional<StoredSession> RememberingTokenStore::reload()
{
    const std::lock_guard order(keptLock_);
    const auto remembered = known();
    const bool mayBeNewer = !remembered || (remembered->session && remembered->isKept);
    if (mayBeNewer) {
        if (auto kept = readKept()) return kept;
    }
    return remembered ? remembered->session : std::nullopt;
}

std::optional<StoredSession> RememberingTokenStore::readKept()
{
    auto kept = kept_->load();
    if (kept) know({kept, true});
    return kept;
}

void RememberingTokenStore::save(const StoredSession& session)
{
    const std::lock_guard order(keptLock_);
    know({session, false});
    kept_->save(session);
    know({session, true});
}

void RememberingTokenStore::clear() noexcept
{
    const std::lock_guard order(keptLock_);
    know({std::nullopt, false});
    kept_->clear();
}

} // namespace vorn
