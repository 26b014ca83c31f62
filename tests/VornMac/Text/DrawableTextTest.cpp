#include "VornMac/Text/DrawableText.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

TEST(DrawableText, IsWhatPeopleWrote)
{
    for (const char* text : {"", "Hello", "two\nlines", "שלום\u200F", "👩‍👩‍👧", "zero\u200Bwidth"})
        EXPECT_EQ(drawable(text), text);
}

TEST(DrawableText, HasASignForWhatCannotBeDrawn)
{
    EXPECT_EQ(drawable("\x1B[31mred\x07 a\0b\x7F \u009B2J"s), "\uFFFD[31mred\uFFFD a\uFFFDb\uFFFD \uFFFD2J");
    EXPECT_EQ(drawable("one\ttab\r\nand\ra line\r"), "one tab\nand\uFFFDa line\uFFFD");
}

} // namespace
} // namespace vorn
