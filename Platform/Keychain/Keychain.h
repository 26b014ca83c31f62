#pragma once

#include "Platform/Keychain/KeychainError.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// Identifies a secret: at most one is kept for each pair.
struct KeychainItem {
    std::string service; ///< the owner: an application's bundle identifier
    std::string account; ///< which of the owner's secrets
    bool operator==(const KeychainItem&) const = default;
};

/// The current user's secrets: macOS's keychain, elsewhere the desktop's Secret Service. A secret may be any bytes.
/// Threads: any. On Linux a call other than `readPatiently` takes at most `SecretServiceKeychain::defaultLimit`; on
/// macOS every call waits while the system asks the user.
class Keychain {
public:
    virtual ~Keychain() = default;

    /// The current user's own.
    static std::shared_ptr<Keychain> system();

    /// Whether the system asks the user before a program reads what another program has added.
    static bool keepsProgramsApart() noexcept;

    /// The secret of `item`; nothing when there is none. Throws `KeychainError` when it cannot be read.
    virtual std::optional<std::string> read(const KeychainItem& item) = 0;

    /// As `read`, but waits minutes for a user who is asked for a password. Call it only on a thread that nothing waits
    /// for.
    virtual std::optional<std::string> readPatiently(const KeychainItem& item) { return read(item); }

    /// Stores `bytes` as the secret of `item`. The system's programs show `label` as its name. Throws `KeychainError`,
    /// `duplicateItem` if there is a secret already.
    virtual void add(const KeychainItem& item, std::string_view bytes, const std::string& label) = 0;

    /// Removes the secret of `item`. Returns whether none is left; if one is, a following `add` fails.
    virtual bool remove(const KeychainItem& item) noexcept = 0;

    /// Removes the secret of `item` if `matches` returns true for it. On Linux both steps share the time limit of one
    /// call. Returns the secret if it stays. `matches` must own what it uses: a call that timed out may still invoke
    /// it. Throws `KeychainError`.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): overriders move it
    virtual std::optional<std::string> removeIf(const KeychainItem& item, std::function<bool(std::string_view)> matches)
    {
        auto kept = read(item);
        if (!kept || !matches(*kept)) return kept;
        if (!remove(item)) throw KeychainError(KeychainError::notAvailable);
        return std::nullopt;
    }

    /// Removes the secret of `item` and adds `bytes`. On Linux both steps share the time limit of one call. Throws
    /// `KeychainError`, possibly after the old secret was removed.
    virtual void replace(const KeychainItem& item, std::string_view bytes, const std::string& label)
    {
        remove(item);
        add(item, bytes, label);
    }
};

} // namespace vorn
