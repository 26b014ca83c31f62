#pragma once

#include "Platform/Keychain/Keychain.h"

#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// A keychain with one secret that records its calls and fails those that it is told to. Threads: one.
class ScriptedKeychain final : public Keychain {
public:
    std::optional<std::string> secret;
    std::optional<KeychainError> readError; ///< thrown by every read
    std::optional<KeychainError> addError;  ///< thrown by every add
    bool keepsWhatIsRemoved = false;        ///< remove has no effect

    /// The calls, in order: "add app.vorn.mac/desktop-session as "Vorn for Mac session"".
    const std::vector<std::string>& calls() const { return calls_; }

    std::optional<std::string> read(const KeychainItem& item) override;
    void add(const KeychainItem& item, std::string_view bytes, const std::string& label) override;
    std::optional<std::string> removeIf(const KeychainItem& item,
                                        std::function<bool(std::string_view)> matches) override;
    bool remove(const KeychainItem& item) noexcept override;

private:
    std::vector<std::string> calls_;
};

} // namespace vorn::testing
