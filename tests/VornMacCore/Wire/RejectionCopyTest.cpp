#include "VornMacCore/Wire/RejectionCopy.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(RejectionCopy, SaysWhatToDoAboutEachReason)
{
    EXPECT_EQ(RejectionCopy::text("media_unreadable"),
              "We couldn't read this export. Update Vorn for Mac and try again.");
    EXPECT_EQ(RejectionCopy::text("wrong_provider"), "This upload didn't look like your Nimbrel chat.");
    EXPECT_EQ(RejectionCopy::text("duplicate_media"),
              "These conversations were already uploaded from another account.");
    EXPECT_EQ(
        RejectionCopy::text("export_too_small"),
        "There isn't enough Nimbrel conversation yet. Keep chatting and come back with a few conversations and at "
        "least 10 of your own messages.");
    EXPECT_EQ(RejectionCopy::text("nothing_new_since_last"),
              "Nothing new since your last upload. Come back after more chats with Nimbrel.");
    EXPECT_EQ(RejectionCopy::text("authenticity_suspected"), "The upload didn't arrive intact. Try again.");
}

TEST(RejectionCopy, StaysGeneralForOtherReasons)
{
    EXPECT_EQ(RejectionCopy::text(std::nullopt), "This upload wasn't accepted.");
    for (const char* key : {"", "unknown", "Wrong_provider", "wrong_provider ", "wrong"}) {
        EXPECT_EQ(RejectionCopy::text(key), "This upload wasn't accepted.") << key;
    }
}

} // namespace
} // namespace vorn
