#pragma once

#include "Platform/Keychain/Keychain.h"
#include "Platform/Keychain/linux/GLibEvents.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gio/gio.h>
#include <libsecret/secret.h>

namespace vorn {

/// The steps of one call of `SecretServiceKeychain`, run on a thread of its own. Uses only libsecret's asynchronous
/// functions: the synchronous ones do not return before a dialog is closed. Names must be well-formed text without NUL:
/// given any other, GLib returns from the call and never calls back.
class SecretServiceRequest {
public:
    /// Written by the request's thread, read after its end; `asksUser` may be read at any time.
    struct Outcome {
        std::optional<std::string> bytes;
        std::optional<KeychainError> error;
        std::atomic<bool> asksUser = false;

        /// The status when there was no answer in time.
        std::int32_t lateStatus() const;
    };

    /// Cancels the steps at 90 % of `limit`, or `patience` later if the user is then being asked; the rest of `limit`
    /// is for clean-up.
    SecretServiceRequest(Outcome& outcome, std::chrono::milliseconds limit, std::chrono::milliseconds patience);
    ~SecretServiceRequest();
    SecretServiceRequest(SecretServiceRequest&&) = delete;

    void connect(const std::string& address);

    std::optional<std::string> read(const KeychainItem& item);
    void add(const KeychainItem& item, std::string_view bytes, const std::string& label);
    void remove(const KeychainItem& item);

private:
    /// Returns the result of an asynchronous function, or throws its failure.
    template <class Finish, class... Arguments>
    auto finish(Finish function, Arguments... arguments);

    void giveUpAfter(std::chrono::milliseconds time);
    void giveUp();
    std::vector<glib::Object<SecretItem>> search(const KeychainItem& item, SecretSearchFlags flags);
    void unlock(SecretItem* item);

    Outcome& outcome_;
    std::chrono::milliseconds limit_, patience_;
    glib::Events events_;
    glib::Object<GCancellable> cancellable_{g_cancellable_new()};
    glib::Source giveUp_, hangUp_;
    glib::Object<GDBusConnection> bus_;
    glib::Object<SecretService> service_;
};

} // namespace vorn
