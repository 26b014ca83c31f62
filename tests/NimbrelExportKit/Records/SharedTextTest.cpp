#include "NimbrelExportKit/Records/SharedText.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SharedText, IsNoneUntilGivenAText)
{
    EXPECT_FALSE(SharedText().hasValue());
    EXPECT_EQ(SharedText().view(), "");
    EXPECT_TRUE(SharedText("iMessage").hasValue());
    EXPECT_EQ(SharedText("iMessage").view(), "iMessage");
}

TEST(SharedText, TellsAnEmptyTextFromNone)
{
    EXPECT_TRUE(SharedText("").hasValue());
    EXPECT_EQ(SharedText("").view(), "");
    EXPECT_NE(SharedText(""), SharedText());
    EXPECT_NE(SharedText(), SharedText(""));
}

TEST(SharedText, IsComparedByWhatItSays)
{
    EXPECT_EQ(SharedText("SMS"), SharedText("SMS"));
    EXPECT_NE(SharedText("SMS"), SharedText("iMessage"));
    EXPECT_EQ(SharedText(), SharedText());
}

TEST(SharedText, SharesOneStringBetweenCopies)
{
    const SharedText text("a text longer than what a string object holds by itself");
    const SharedText copy = text; // NOLINT(performance-unnecessary-copy-initialization): the copy is what is looked at
    EXPECT_EQ(copy, text);
    EXPECT_EQ(copy.view().data(), text.view().data());
}

TEST(SharedText, KeepsNULCharacters)
{
    EXPECT_EQ(SharedText(std::string("a\0b", 3)).view().size(), 3U);
}

} // namespace
} // namespace vorn
