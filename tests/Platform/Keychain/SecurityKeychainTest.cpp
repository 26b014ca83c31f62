#include "Platform/Keychain/macos/SecurityKeychain.h"

#include "tests/Platform/Keychain/KeychainContract.h"
#include "tests/Platform/Keychain/MacKeychain.h"
#include "tests/support/apple/doubles/CFDoubles.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

namespace vorn::testing {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using Pairs = MacKeychain::Pairs;
using Call = MacKeychain::Call;

/// An empty keychain; fails the test if objects leak.
class SecurityWorld : public KeychainWorld {
public:
    SecurityWorld() { macKeychain() = {}; }
    ~SecurityWorld() override { EXPECT_EQ(liveCFObjects(), before_) << "objects leaked"; }

    Keychain& keychain() override { return keychain_; }

private:
    const std::size_t before_ = liveCFObjects();
    SecurityKeychain keychain_;
};

INSTANTIATE_TEST_SUITE_P(Kinds, KeychainContract,
                         ::testing::Values(KeychainKind{"Security", [] { return std::make_unique<SecurityWorld>(); }}),
                         nameOf);

const KeychainItem item{"com.example.vorn", "desktop-session"};

class SecurityKeychainTest : public ::testing::Test {
protected:
    Keychain& keychain() { return world_.keychain(); }
    MacKeychain& mac() { return macKeychain(); }

    static Pairs queryAnd(const Pairs& more)
    {
        Pairs pairs = {{"kSecClass", "kSecClassGenericPassword"},
                       {"kSecAttrService", "com.example.vorn"},
                       {"kSecAttrAccount", "desktop-session"}};
        pairs.insert(more.begin(), more.end());
        return pairs;
    }

private:
    SecurityWorld world_;
};

TEST_F(SecurityKeychainTest, AsksForTheDataOfOneItem)
{
    mac().secrets[{item.service, item.account}] = "secret";
    EXPECT_THAT(keychain().read(item), Optional("secret"s));
    EXPECT_THAT(mac().calls,
                ElementsAre(Call{"SecItemCopyMatching",
                                 queryAnd({{"kSecReturnData", "true"}, {"kSecMatchLimit", "kSecMatchLimitOne"}})}));
}

TEST_F(SecurityKeychainTest, RemovesAndThenAddsToReplace)
{
    keychain().replace(item, "secret\0"s, "Vorn for Mac session");
    EXPECT_THAT(mac().calls,
                ElementsAre(Call{"SecItemDelete", queryAnd({})},
                            Call{"SecItemAdd", queryAnd({{"kSecValueData", "secret\0"s},
                                                         {"kSecAttrLabel", "Vorn for Mac session"},
                                                         {"kSecAttrAccessible",
                                                          "kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly"}})}));
}

TEST_F(SecurityKeychainTest, ReportsEveryStatusOfReadingButThatThereIsNothing)
{
    for (const OSStatus status : {errSecParam, errSecUserCanceled, errSecNotAvailable, errSecAuthFailed, errSecDecode,
                                  errSecInteractionNotAllowed, errSecMissingEntitlement, errSecInternalError}) {
        mac().failures["SecItemCopyMatching"] = status;
        EXPECT_EQ(statusOf([&] { keychain().read(item); }), status);
    }
    mac().failures["SecItemCopyMatching"] = errSecItemNotFound;
    EXPECT_EQ(keychain().read(item), std::nullopt);
}

TEST_F(SecurityKeychainTest, ReportsEveryStatusOfAdding)
{
    for (const OSStatus status : {errSecParam, errSecNotAvailable, errSecAuthFailed, errSecDuplicateItem,
                                  errSecItemNotFound, errSecInteractionNotAllowed, errSecMissingEntitlement}) {
        mac().failures["SecItemAdd"] = status;
        EXPECT_EQ(statusOf([&] { keychain().add(item, "secret", "Vorn"); }), status);
    }
    EXPECT_THAT(mac().secrets, IsEmpty());
}

TEST_F(SecurityKeychainTest, AddsWhateverRemovingFailedWith)
{
    mac().failures["SecItemDelete"] = errSecInteractionNotAllowed;
    EXPECT_FALSE(keychain().remove(item));
    keychain().replace(item, "secret", "Vorn");
    EXPECT_THAT(keychain().read(item), Optional("secret"s));
}

TEST_F(SecurityKeychainTest, RefusesWhatIsFoundButIsNoData)
{
    mac().found = nullptr;
    EXPECT_EQ(statusOf([&] { keychain().read(item); }), KeychainError::decode);
    mac().found = CFDouble::make(CFDouble::Type::string, "no data"); // the caller releases it
    EXPECT_EQ(statusOf([&] { keychain().read(item); }), KeychainError::decode);
}

TEST_F(SecurityKeychainTest, AsksNothingOfTheSystemForNamesThatAreNoText)
{
    EXPECT_EQ(statusOf([&] { keychain().read({"\xFF", "account"}); }), KeychainError::parameter);
    EXPECT_EQ(statusOf([&] { keychain().add({"service", "\xFF"}, "secret", "Vorn"); }), KeychainError::parameter);
    EXPECT_FALSE(keychain().remove({"\xFF", "account"}));
    EXPECT_THAT(mac().calls, IsEmpty());
}

/// The doubles themselves detect leaks.
TEST(MacDoubles, CountWhatIsAlive)
{
    const std::size_t before = liveCFObjects();
    CFTypeRef object = CFDouble::make(CFDouble::Type::string, "text");
    EXPECT_EQ(liveCFObjects(), before + 1);
    CFRetain(object);
    CFRelease(object);
    EXPECT_EQ(liveCFObjects(), before + 1);
    CFRelease(object);
    EXPECT_EQ(liveCFObjects(), before);
}

TEST(MacDoubles, FailATestThatReleasesTooOften)
{
    static CFTypeRef object = nullptr;
    object = CFDouble::make(CFDouble::Type::string, "text");
    CFRelease(object);
    EXPECT_NONFATAL_FAILURE(CFRelease(object), "released a destroyed object");
    EXPECT_NONFATAL_FAILURE(CFRelease(kSecClass), "kSecClass was released too often");
    CFRetain(kSecClass);
}

TEST(SystemKeychain, OfAMacIsSecuritys)
{
    EXPECT_TRUE(std::dynamic_pointer_cast<SecurityKeychain>(Keychain::system()));
    EXPECT_TRUE(Keychain::keepsProgramsApart());
}

} // namespace
} // namespace vorn::testing
