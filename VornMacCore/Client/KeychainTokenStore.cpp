#include "VornMacCore/Client/KeychainTokenStore.h"

#include "VornMacCore/Wire/Application.h"

#include <utility>

namespace vorn {
namespace {

std::optional<StoredSession> sessionIn(std::string_view bytes)
{
    try {
        return StoredSession::fromJSON(bytes);
    } catch (const std::exception&) {
        return std::nullopt; // whatever the failure, linking again repairs it
    }
}

constexpr const char* notCleared = "keychain clear failed: the session may still be there";

} // namespace

KeychainTokenStore::KeychainTokenStore(std::string service, std::string account, std::shared_ptr<Keychain> keychain)
    : item_{std::move(service), std::move(account)}, keychain_(std::move(keychain)), log_(bundleIdentifier(), "api")
{
}

std::optional<StoredSession> KeychainTokenStore::load()
{
    try {
        const auto bytes = keychain_->read(item_);
        return bytes ? sessionIn(*bytes) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<StoredSession> KeychainTokenStore::restore()
{
    const auto bytes = keychain_->readPatiently(item_);
    return bytes ? sessionIn(*bytes) : std::nullopt;
}

void KeychainTokenStore::save(const StoredSession& session)
{
    const std::string bytes = session.toJSON();
    keychain_->replace(item_, bytes, "Vorn for Mac session");
}

void KeychainTokenStore::clear() noexcept
{
    if (!keychain_->remove(item_)) log_.error(notCleared);
}

std::optional<StoredSession> KeychainTokenStore::clearIf(std::function<bool(const StoredSession&)> matches)
{
    try {
        const auto kept = keychain_->removeIf(item_, [matches = std::move(matches)](std::string_view bytes) {
            const auto session = sessionIn(bytes);
            return session && matches(*session);
        });
        return kept ? sessionIn(*kept) : std::nullopt;
    } catch (const std::exception&) {
        log_.error(notCleared);
        return std::nullopt;
    }
}

} // namespace vorn
