#pragma once

#include "Platform/Keychain/Keychain.h"

#include <chrono>
#include <functional>

namespace vorn {

class SecretServiceRequest;

/// Secrets in the desktop's Secret Service (freedesktop.org), in its default collection, under the attributes "service"
/// and "account" and a schema named "<service>.Item". A locked collection is unlocked first, for which the service may
/// ask for a password.
/// Every call connects anew, as the bus and the service may have been restarted.
/// Errors: `notAvailable` when there is no bus or service or no answer in time; `interactionNotAllowed` when
/// the collection is locked and was not unlocked in time; `userCanceled` when the dialog was dismissed or could not be
/// shown; `authFailed` when the bus or the service refuses this program; `duplicateItem`; `parameter` for names that
/// are not text. Threads: any.
class SecretServiceKeychain : public Keychain {
public:
    static constexpr std::chrono::milliseconds defaultLimit{3000};
    static constexpr std::chrono::milliseconds defaultPatience{120'000};

    /// No call keeps its caller waiting for longer than `limit`; `readPatiently` waits `patience` longer while the user
    /// is asked.
    explicit SecretServiceKeychain(std::chrono::milliseconds limit = defaultLimit,
                                   std::chrono::milliseconds patience = defaultPatience)
        : limit_(limit), patience_(patience)
    {
    }

    std::chrono::milliseconds limit() const noexcept { return limit_; }

    std::optional<std::string> read(const KeychainItem& item) override;
    std::optional<std::string> readPatiently(const KeychainItem& item) override;
    void add(const KeychainItem& item, std::string_view bytes, const std::string& label) override;
    bool remove(const KeychainItem& item) noexcept override;
    std::optional<std::string> removeIf(const KeychainItem& item,
                                        std::function<bool(std::string_view)> matches) override;
    /// If the old item cannot be removed, throws without adding. The user is asked at most once.
    void replace(const KeychainItem& item, std::string_view bytes, const std::string& label) override;

private:
    using Steps = std::function<std::optional<std::string>(SecretServiceRequest&)>;

    /// `patience` is how long beyond the limit to wait while the user is asked.
    std::optional<std::string> perform(Steps steps, std::chrono::milliseconds patience = {}) const;

    std::chrono::milliseconds limit_;
    std::chrono::milliseconds patience_;
};

} // namespace vorn
