#include "Platform/Keychain/KeychainError.h"

#include <string>

#include <gtest/gtest.h>

namespace vorn {

TEST(KeychainError, SaysItsCodeAndWhatItMeans)
{
    EXPECT_STREQ(KeychainError(-25300).what(), "keychain error -25300 (there is no such item)");
    EXPECT_STREQ(KeychainError(-128).what(), "keychain error -128 (the user dismissed the dialog)");
    EXPECT_STREQ(KeychainError(-2147483647 - 1).what(), "keychain error -2147483648");
}

TEST(KeychainError, HasAMeaningForEveryCodeOfItsOwn)
{
    for (const auto status :
         {KeychainError::parameter, KeychainError::userCanceled, KeychainError::notAvailable, KeychainError::authFailed,
          KeychainError::duplicateItem, KeychainError::itemNotFound, KeychainError::interactionNotAllowed,
          KeychainError::decode, KeychainError::missingEntitlement}) {
        EXPECT_NE(std::string(KeychainError(status).what()).find('('), std::string::npos) << status;
    }
}

TEST(KeychainError, IsTheSameWithTheSameCode)
{
    EXPECT_EQ(KeychainError(-25300), KeychainError(KeychainError::itemNotFound));
    EXPECT_NE(KeychainError(-25300), KeychainError(-25299));
}

} // namespace vorn
