#pragma once

#include "Platform/Base/Log.h"
#include "Platform/Keychain/Keychain.h"
#include "VornMacCore/Client/TokenStore.h"

#include <memory>
#include <string>

namespace vorn {

/// Keeps the session in the user's keychain: one item, whose secret is the session's JSON. A value.
class KeychainTokenStore final : public TokenStore {
public:
    /// The account of the application's item, whose service is the bundle identifier; on macOS, programs outside a
    /// bundle append ".terminal" to it.
    static constexpr const char* sessionAccount = "desktop-session";

    KeychainTokenStore(std::string service, std::string account,
                       std::shared_ptr<Keychain> keychain = Keychain::system());

    bool answersAtOnce() const override { return false; }
    std::optional<StoredSession> load() override;
    /// Throws `KeychainError`. An item that holds no session reads as none.
    std::optional<StoredSession> restore() override;
    /// Removes the old item, then adds the new one: an item is never changed in place. Throws `KeychainError` when the
    /// keychain does not take the new one (the old one may be gone by then), `UnencodableJSON` before anything is
    /// changed.
    void save(const StoredSession& session) override;
    /// Logs if the item cannot be removed: its session then stays on this computer.
    void clear() noexcept override;
    /// In one call of the keychain. A failure is logged and reads as "no session".
    std::optional<StoredSession> clearIf(std::function<bool(const StoredSession&)> matches) override;

private:
    KeychainItem item_;
    std::shared_ptr<Keychain> keychain_;
    Log log_;
};

} // namespace vorn
