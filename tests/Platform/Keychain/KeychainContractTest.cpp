#include "tests/Platform/Keychain/KeychainContract.h"
#include "Platform/Keychain/linux/SecretServiceKeychain.h"
#include "tests/Platform/Keychain/InMemoryKeychain.h"
#include "tests/Platform/Keychain/TestBus.h"

namespace vorn::testing {
namespace {

class InMemoryWorld : public KeychainWorld {
public:
    Keychain& keychain() override { return keychain_; }

private:
    InMemoryKeychain keychain_;
};

class SecretServiceWorld : public KeychainWorld {
public:
    Keychain& keychain() override { return *keychain_; }

private:
    TestBus bus_;
    TestKeyring keyring_{bus_};
    std::shared_ptr<Keychain> keychain_ = Keychain::system();
};

INSTANTIATE_TEST_SUITE_P(Kinds, KeychainContract,
                         ::testing::Values(KeychainKind{"InMemory", [] { return std::make_unique<InMemoryWorld>(); }},
                                           KeychainKind{"SecretService",
                                                        [] { return std::make_unique<SecretServiceWorld>(); }}),
                         nameOf);

} // namespace
} // namespace vorn::testing
