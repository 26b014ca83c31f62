#include "VornMac/QRCode/QRMatrix.h"

#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace vorn {
namespace {

/// A finder pattern: rings of dark, light and dark around nine dark modules.
bool finderIsDark(int row, int column)
{
    const bool isInOuterRing = row == 0 || row == 6 || column == 0 || column == 6;
    const bool isInLightRing = !isInOuterRing && (row == 1 || row == 5 || column == 1 || column == 5);
    return !isInLightRing;
}

TEST(QRMatrix, HasFinderPatternsInThreeCorners)
{
    const QRMatrix code("vorn://link?code=0123456789abcdef");
    const int far = code.size() - 7;
    for (const auto& [top, left] : {std::pair(0, 0), std::pair(0, far), std::pair(far, 0)}) {
        for (int row = 0; row < 7; ++row) {
            for (int column = 0; column < 7; ++column) {
                SCOPED_TRACE(testing::Message() << top + row << ", " << left + column);
                EXPECT_EQ(code.isDark(top + row, left + column), finderIsDark(row, column));
            }
        }
    }
}

TEST(QRMatrix, IsAsSmallAsTheStandardAllows)
{
    // Bytes that fit the versions 1, 2 and 40 at level M; the side of version n is 17 + 4n modules.
    EXPECT_EQ(QRMatrix(std::string(14, '\x80')).size(), 21);
    EXPECT_EQ(QRMatrix(std::string(15, '\x80')).size(), 25);
    EXPECT_EQ(QRMatrix(std::string(26, '\x80')).size(), 25);
    EXPECT_EQ(QRMatrix(std::string(2331, '\x80')).size(), 177);
}

TEST(QRMatrix, SaysItsErrorCorrectionLevelBesideTheFinderPatterns)
{
    const QRMatrix code("vorn://link");
    // The first two of the format's bits, under their fixed mask of 10: level M is 00.
    EXPECT_TRUE(code.isDark(8, 0));
    EXPECT_FALSE(code.isDark(8, 1));
}

TEST(QRMatrix, IsLightAllAround)
{
    const QRMatrix code("vorn://link");
    for (int at = -4; at < code.size() + 4; ++at) {
        for (const int outside : {-4, -1, code.size(), code.size() + 3}) {
            EXPECT_FALSE(code.isDark(outside, at));
            EXPECT_FALSE(code.isDark(at, outside));
        }
    }
}

TEST(QRMatrix, EncodesBytesBehindANul)
{
    using namespace std::string_view_literals;
    const QRMatrix whole("a\0bcdefghijklmnop"sv);
    EXPECT_EQ(whole.size(), 25); // one byte alone would fit the smallest
}

TEST(QRMatrix, RefusesWhatFitsNoCode)
{
    EXPECT_THROW(QRMatrix(std::string(2332, 'x')), std::length_error);
    EXPECT_THROW(QRMatrix(""), std::length_error);
}

} // namespace
} // namespace vorn
