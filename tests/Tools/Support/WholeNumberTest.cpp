#include "Tools/Support/WholeNumber.h"

#include <limits>

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(WholeNumber, IsOneOfDecimalDigitsWithinTheBounds)
{
    for (const char* text : {"7", "8", "42", "100"}) EXPECT_EQ(mistakeInWholeNumber(text, 7, 100), "") << text;
    EXPECT_EQ(mistakeInWholeNumber("0", 0, 9), "");
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(mistakeInWholeNumber("18446744073709551615", 0, most), "");
    EXPECT_NE(mistakeInWholeNumber("18446744073709551616", 0, most), "");
}

TEST(WholeNumber, IsNothingElse)
{
    for (const char* text : {"", "6", "101", "-8", "+8", " 8", "8 ", "8.0", "1e1", "0x8", "010", "eight", "nan"}) {
        EXPECT_EQ(mistakeInWholeNumber(text, 7, 100),
                  "\"" + std::string(text) + "\" is not a whole number from 7 to 100");
    }
    EXPECT_EQ(mistakeInWholeNumber("\x1B[2J", 0, 1), "\"\uFFFD[2J\" is not a whole number from 0 to 1");
}

} // namespace
} // namespace vorn
