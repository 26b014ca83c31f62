#include "VornMac/Text/Consent.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;

/// Users agreed to this text under this version: neither may change without the other.
TEST(Consent, IsThatOfItsVersion)
{
    EXPECT_STREQ(Consent::termsVersion, "vorn-mac-nimbrel-1");
    const Consent consent = consentFor("$12.50");
    EXPECT_EQ(consent.title, "Your Nimbrel chat");
    EXPECT_EQ(consent.subtitle, "Exactly what we upload");
    EXPECT_EQ(consent.line, "Your Nimbrel chat: exactly what we upload");
    EXPECT_EQ(consent.reads.heading, "What Vorn reads");
    EXPECT_THAT(consent.reads.points,
                ElementsAre("Your one-to-one conversation with Nimbrel: the text of each message, when it was sent, "
                            "and who sent it.",
                            "Links in those messages, and the type of any attachment (\"a photo\"), never the file "
                            "itself."));
    EXPECT_EQ(consent.neverReads.heading, "What Vorn never reads");
    EXPECT_THAT(consent.neverReads.points,
                ElementsAre("Any other conversation, group chats (even ones Nimbrel is in), contacts, photos or "
                            "files."));
    EXPECT_EQ(consent.next.heading, "What happens next");
    EXPECT_THAT(consent.next.points,
                ElementsAre("Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn "
                            "$12.50 when it's accepted."));
    EXPECT_EQ(consent.understandsUpload, "I understand what's uploaded");
    EXPECT_EQ(consent.agreesToShare, "I agree to share my Nimbrel chat");
}

TEST(Consent, IsKeptForEachUserAndVersion)
{
    EXPECT_EQ(consentKey("user-1"), "consent.vorn-mac-nimbrel-1.user-1");
}

} // namespace
} // namespace vorn
