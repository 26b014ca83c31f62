#pragma once

#include "Platform/Keychain/KeychainError.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// Which secret of the user's: at most one is kept for each pair.
struct KeychainItem {
    std::string service; ///< whose: an application's bundle identifier
    std::string account; ///< which of its secrets
    bool operator==(const KeychainItem&) const = default;
};

/// The secrets that the system keeps for the current user: macOS's keychain, elsewhere the desktop's Secret Service.
/// Secrets are bytes of any kind, NUL too.
/// Threads: any. On Linux a call waits for at most `SecretServiceKeychain::defaultLimit`; on macOS it may show a
/// dialog.
class Keychain {
public:
    virtual ~Keychain() = default;

    /// The current user's own.
    static std::shared_ptr<Keychain> system();

    /// The secret of `item`; nothing when there is none. Throws `KeychainError` when that cannot be told.
    virtual std::optional<std::string> read(const KeychainItem& item) = 0;

    /// Keeps `bytes` as the secret of `item`, which must have none: `KeychainError::duplicateItem` otherwise. To
    /// replace one, remove it first. `label` is what the system's own programs show. Throws `KeychainError`.
    virtual void add(const KeychainItem& item, std::string_view bytes, const std::string& label) = 0;

    /// Removes the secret of `item`, if it can be done: what is left behind fails the `add` that follows.
    virtual void remove(const KeychainItem& item) noexcept = 0;
};

} // namespace vorn
