#include "VornMac/Text/KeychainText.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(KeychainText, TellsWhatIsWaitedFor)
{
    EXPECT_EQ(keychainText(phase::Waiting{}, std::nullopt).status,
              (StatusText{Tone::waiting, "Waiting for your keychain…"}));
    EXPECT_EQ(keychainText(phase::Waiting{}, std::nullopt).retry, "");
}

TEST(KeychainText, TellsALockedKeychainFromOneThatRefuses)
{
    const StatusText locked{Tone::warning,
                            "Your keychain is still locked, so Vorn can't tell whether this Mac is linked."};
    const StatusText refused{Tone::warning,
                             "Your keychain didn't let Vorn in, so it can't tell whether this Mac is linked."};
    for (const auto status : {KeychainError::interactionNotAllowed, KeychainError::userCanceled})
        EXPECT_EQ(keychainText(phase::Refused{}, KeychainError(status)).status, locked);
    for (const auto status : {KeychainError::authFailed, KeychainError::missingEntitlement, KeychainError::decode})
        EXPECT_EQ(keychainText(phase::Refused{}, KeychainError(status)).status, refused);
}

TEST(KeychainText, OffersTwoWaysAfterARefusal)
{
    const ScreenText text = keychainText(phase::Refused{}, KeychainError(KeychainError::authFailed));
    EXPECT_EQ(text.retry, "Try again");
    EXPECT_EQ(text.primary, "Link this Mac again");
}

TEST(KeychainText, SaysNothingWhileThereIsNothingToSay)
{
    EXPECT_EQ(keychainText(phase::Idle{}, std::nullopt), ScreenText{});
    EXPECT_EQ(keychainText(phase::Loading{}, std::nullopt), ScreenText{});
}

} // namespace
} // namespace vorn
