#include "Platform/Base/ASCII.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_view_literals;

TEST(ASCII, TellsItsCharactersApart)
{
    for (const char digit : "0189"sv) EXPECT_TRUE(ascii::isDigit(digit) && ascii::isAlphanumeric(digit)) << digit;
    for (const char letter : "azAZ"sv) EXPECT_TRUE(ascii::isLetter(letter) && ascii::isAlphanumeric(letter)) << letter;
    for (const char digit : "09afAF"sv) EXPECT_TRUE(ascii::isHexDigit(digit)) << digit;
    for (const char other : "@[`{/:gG\xC3\xB9\xE1\0"sv) EXPECT_FALSE(ascii::isHexDigit(other)) << other;
    for (const char other : "@[`{/:\xC3\xB9\xE1\0"sv) EXPECT_FALSE(ascii::isAlphanumeric(other)) << other;
    EXPECT_FALSE(ascii::isDigit(U'\u0661')) << "a digit, but an Arabic one";
    EXPECT_FALSE(ascii::isLetter(U'\u0131'));
}

TEST(ASCII, FoldsItsLettersAlone)
{
    EXPECT_EQ(ascii::lowercased("AZaz@[09 \xC3\x84\0I"sv), "azaz@[09 \xC3\x84\0i"sv);
    EXPECT_TRUE(ascii::equalIgnoringCase("Content-Type", "content-TYPE"));
    EXPECT_FALSE(ascii::equalIgnoringCase("Content-Type", "Content-Typ"));
    EXPECT_FALSE(ascii::equalIgnoringCase("@`", "`@"));
    EXPECT_FALSE(ascii::equalIgnoringCase("\xC3\x84", "\xC3\xA4"));
}

} // namespace
} // namespace vorn
