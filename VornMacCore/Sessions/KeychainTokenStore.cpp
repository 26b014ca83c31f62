#include "VornMacCore/Sessions/KeychainTokenStore.h"

#include "VornMacCore/Application/Application.h"

#include <utility>

namespace vorn {

KeychainTokenStore::KeychainTokenStore(std::string service, std::string account, std::shared_ptr<Keychain> keychain)
    : item_{std::move(service), std::move(account)}, keychain_(std::move(keychain)), log_(bundleIdentifier(), "api")
{
}

std::optional<StoredSession> KeychainTokenStore::load()
{
    try {
        const auto bytes = keychain_->read(item_);
        if (!bytes) return std::nullopt;
        return StoredSession::fromJSON(*bytes);
    } catch (const std::exception&) {
        return std::nullopt; // whatever is wrong, linking again mends it
    }
}

void KeychainTokenStore::save(const StoredSession& session)
{
    const std::string bytes = session.toJSON();
    keychain_->replace(item_, bytes, "Vorn for Mac session");
}

void KeychainTokenStore::clear() noexcept
{
    if (!keychain_->remove(item_)) log_.error("keychain clear failed: the session may still be there");
}

} // namespace vorn
