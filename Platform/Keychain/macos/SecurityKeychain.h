#pragma once

#include "Platform/Keychain/Keychain.h"

namespace vorn {

/// Generic passwords in macOS's keychain, on this device only, readable after the first unlock.
/// Threads: any, as the Security framework allows.
class SecurityKeychain : public Keychain {
public:
    std::optional<std::string> read(const KeychainItem& item) override;
    void add(const KeychainItem& item, std::string_view bytes, const std::string& label) override;
    bool remove(const KeychainItem& item) noexcept override;
};

} // namespace vorn
