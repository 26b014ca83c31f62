#pragma once

#include "Platform/Keychain/Keychain.h"
#include "Tools/Terminal/CommandFailure.h"

#include <memory>
#include <string>
#include <utility>

namespace vorn {

/// The place in the user's keychain where the session is kept, for those who have to tell the user how things stand: a
/// `TokenStore` reads any trouble as "no session". Threads: any. Errors: `CommandFailure` with what is wrong with the
/// keychain, and then `consequence`, a sentence.
class SessionKeychain {
public:
    SessionKeychain(std::shared_ptr<Keychain> keychain, KeychainItem item)
        : keychain_(std::move(keychain)), item_(std::move(item))
    {
    }

    /// Whether anything is kept there, be it readable or not.
    bool holdsSession(const std::string& consequence) const;

    /// What to end with after `error`, which the keychain gave.
    static CommandFailure failure(const KeychainError& error, const std::string& consequence);

    void requireReachable(const std::string& consequence) const { holdsSession(consequence); }

private:
    std::shared_ptr<Keychain> keychain_;
    KeychainItem item_;
};

} // namespace vorn
