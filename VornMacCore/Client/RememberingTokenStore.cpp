#include "VornMacCore/Client/RememberingTokenStore.h"

#include <utility>

namespace vorn {

std::optional<RememberingTokenStore::Known> RememberingTokenStore::known() const
{
    const std::lock_guard lock(lock_);
    return known_;
}

bool RememberingTokenStore::mayBeOutdated(const std::optional<Known>& remembered)
{
    return !remembered || (remembered->session && remembered->isKept);
}

void RememberingTokenStore::know(Known known)
{
    const std::lock_guard lock(lock_);
    known_ = std::move(known);
}

std::optional<StoredSession> RememberingTokenStore::load()
{
    return knownOr(&TokenStore::load);
}

std::optional<StoredSession> RememberingTokenStore::restore()
{
    return knownOr(&TokenStore::restore);
}

std::optional<StoredSession> RememberingTokenStore::knownOr(std::optional<StoredSession> (TokenStore::*ask)())
{
    if (const auto remembered = known()) return remembered->session;
    const std::lock_guard order(keptLock_);
    // Threads that ask at the same time wait for the first one at this lock, and then share the session that it found.
    if (const auto remembered = known()) return remembered->session;
    return readKept(ask);
}

std::optional<StoredSession> RememberingTokenStore::reload()
{
    const std::lock_guard order(keptLock_);
    const auto remembered = known();
    if (mayBeOutdated(remembered)) {
        if (auto kept = readKept()) return kept;
    }
    return remembered ? remembered->session : std::nullopt;
}

std::optional<StoredSession> RememberingTokenStore::readKept(std::optional<StoredSession> (TokenStore::*ask)())
{
    auto kept = ((*kept_).*ask)();
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

std::optional<StoredSession> RememberingTokenStore::clearIf(std::function<bool(const StoredSession&)> matches)
{
    const std::lock_guard order(keptLock_);
    const auto remembered = known();
    const bool isMeant = remembered && remembered->session && matches(*remembered->session);
    if (mayBeOutdated(remembered)) {
        if (auto kept = kept_->clearIf(std::move(matches))) {
            know({kept, true});
            return kept;
        }
    } else if (isMeant) {
        kept_->clear();
    }
    if (remembered && !isMeant) return remembered->session;
    know({std::nullopt, false});
    return std::nullopt;
}

void RememberingTokenStore::clear() noexcept
{
    const std::lock_guard order(keptLock_);
    know({std::nullopt, false});
    kept_->clear();
}

} // namespace vorn
