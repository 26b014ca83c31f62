#pragma once

#include "Platform/Keychain/KeychainError.h"

#include <functional>
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
/// Threads: any. On Linux a call waits for at most `SecretServiceKeychain::defaultLimit`, but for `readPatiently`. On
/// macOS the system may ask the user first, and the call waits for the answer.
class Keychain {
public:
    virtual ~Keychain() = default;

    /// The current user's own.
    static std::shared_ptr<Keychain> system();

    /// The secret of `item`; nothing when there is none. Throws `KeychainError` when that cannot be told.
    virtual std::optional<std::string> read(const KeychainItem& item) = 0;

    /// As `read`, but leaves a user who is asked for a password the time to give it: minutes. Not for a thread that
    /// others wait for.
    virtual std::optional<std::string> readPatiently(const KeychainItem& item) { return read(item); }

    /// Keeps `bytes` as the secret of `item`, which must have none: `KeychainError::duplicateItem` otherwise. `label`
    /// is what the system's own programs show. Throws `KeychainError`.
    virtual void add(const KeychainItem& item, std::string_view bytes, const std::string& label) = 0;

    /// Removes the secret of `item`. Says whether there is none any more; a secret that is left behind makes the `add`
    /// that follows fail.
    virtual bool remove(const KeychainItem& item) noexcept = 0;

    /// Removes the secret of `item` if `matches` says so of its bytes, as one call: it waits no longer than `read`.
    /// Gives the secret that stays. `matches` owns what it uses: a call that was given up may still ask it. Throws
    /// `KeychainError`.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a keychain that waits takes it over
    virtual std::optional<std::string> removeIf(const KeychainItem& item, std::function<bool(std::string_view)> matches)
    {
        auto kept = read(item);
        if (!kept || !matches(*kept)) return kept;
        if (!remove(item)) throw KeychainError(KeychainError::notAvailable);
        return std::nullopt;
    }

    /// Removes the secret of `item` and adds `bytes`, as one call: together they wait no longer than either alone.
    /// Throws `KeychainError`; the old secret may be gone by then.
    virtual void replace(const KeychainItem& item, std::string_view bytes, const std::string& label)
    {
        remove(item);
        add(item, bytes, label);
    }
};

} // namespace vorn
