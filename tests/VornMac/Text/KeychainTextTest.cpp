#include "VornMac/Text/KeychainText.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(KeychainText, TellWhatIsWaitedFor)
{
    EXPECT_EQ(keychainWaitText(), "Waiting for your keychain…");
}

TEST(KeychainText, TellALockedKeychainFromOneThatRefuses)
{
    for (const auto status : {KeychainError::interactionNotAllowed, KeychainError::userCanceled})
        EXPECT_EQ(keychainRefusalText(KeychainError(status)),
                  "Your keychain is still locked, so Vorn can't tell whether this Mac is linked.");
    for (const auto status : {KeychainError::authFailed, KeychainError::missingEntitlement, KeychainError::decode})
        EXPECT_EQ(keychainRefusalText(KeychainError(status)),
                  "Your keychain didn't let Vorn in, so it can't tell whether this Mac is linked.");
}

} // namespace
} // namespace vorn
