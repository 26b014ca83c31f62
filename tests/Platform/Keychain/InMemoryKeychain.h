#pragma once

#include "Platform/Base/Text.h"
#include "Platform/Keychain/Keychain.h"

#include <map>
#include <mutex>
#include <utility>

namespace vorn::testing {

/// A keychain in memory. Threads: any.
class InMemoryKeychain : public Keychain {
public:
    std::optional<std::string> read(const KeychainItem& item) override
    {
        requireText(item.service + item.account);
        const std::lock_guard lock(mutex_);
        const auto found = secrets_.find({item.service, item.account});
        return found == secrets_.end() ? std::nullopt : std::optional(found->second);
    }

    void add(const KeychainItem& item, std::string_view bytes, const std::string& label) override
    {
        requireText(item.service + item.account + label);
        const std::lock_guard lock(mutex_);
        const bool isNew = secrets_.try_emplace({item.service, item.account}, bytes).second;
        if (!isNew) throw KeychainError(KeychainError::duplicateItem);
    }

    bool remove(const KeychainItem& item) noexcept override
    {
        if (!text::isWellFormed(item.service + item.account)) return false;
        const std::lock_guard lock(mutex_);
        secrets_.erase({item.service, item.account});
        return true;
    }

private:
    static void requireText(const std::string& text)
    {
        if (!text::isWellFormed(text)) throw KeychainError(KeychainError::parameter);
    }

    std::mutex mutex_; // guards `secrets_`
    std::map<std::pair<std::string, std::string>, std::string> secrets_;
};

} // namespace vorn::testing
