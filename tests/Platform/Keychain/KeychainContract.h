#pragma once

#include "Platform/Keychain/Keychain.h"

#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace vorn::testing {

/// A keychain, empty at first, with the environment that it needs.
class KeychainWorld {
public:
    virtual ~KeychainWorld() = default;
    virtual Keychain& keychain() = 0;
};

struct KeychainKind {
    std::string name;
    std::function<std::unique_ptr<KeychainWorld>()> make;
};

/// What every keychain guarantees. A test program instantiates the tests for the keychains that it can make.
class KeychainContract : public ::testing::TestWithParam<KeychainKind> {
protected:
    Keychain& keychain() { return world_->keychain(); }

    const KeychainItem item_{"com.example.vorn", "desktop-session"};

private:
    std::unique_ptr<KeychainWorld> world_ = GetParam().make();
};

std::string nameOf(const ::testing::TestParamInfo<KeychainKind>& kind);

/// The status that `call` fails with; 0 when it does not.
std::int32_t statusOf(const std::function<void()>& call);

} // namespace vorn::testing
