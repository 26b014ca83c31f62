#pragma once

#include "Platform/Keychain/Keychain.h"
#include "Tools/Terminal/CommandFailure.h"

#include <memory>
#include <string>
#include <utility>

namespace vorn {

/// The session's place in the user's keychain, for commands that must report the keychain's failures: a `TokenStore`
/// treats any failure as "no session". Threads: any. Errors: `CommandFailure` with the keychain's failure, followed by
/// `consequence`, a sentence.
class SessionKeychain {
public:
    SessionKeychain(std::shared_ptr<Keychain> keychain, KeychainItem item)
        : keychain_(std::move(keychain)), item_(std::move(item))
    {
    }

    /// Whether the item exists, even if it holds no valid session. Throws if the keychain cannot tell.
    bool holdsSession(const std::string& consequence) const;

    /// The command's failure after `error` from the keychain.
    static CommandFailure failure(const KeychainError& error, const std::string& consequence);

    void requireReachable(const std::string& consequence) const { holdsSession(consequence); }

private:
    std::shared_ptr<Keychain> keychain_;
    KeychainItem item_;
};

} // namespace vorn
