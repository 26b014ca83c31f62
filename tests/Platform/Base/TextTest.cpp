#include "Platform/Base/Text.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

struct Repair {
    std::string bytes, repaired;
};

// One U+FFFD for each maximal ill-formed part: the table of the Unicode Standard, 3.9, and its neighbours.
const std::vector<Repair> repairs = {
    {"plain", "plain"},
    {"a\xFFz", "a\uFFFDz"},
    {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
    {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", "\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {"truncated \xF0\x9F\x98", "truncated \uFFFD"},
    {"caf\xC3\xA9 \xF0\x9F\x98\x80", "café 😀"},
};

TEST(Text, RepairsEachMaximalIllFormedPart)
{
    for (const auto& [bytes, repaired] : repairs) {
        EXPECT_EQ(text::repaired(bytes), repaired);
        EXPECT_EQ(text::isWellFormed(bytes), bytes == repaired) << repaired;
        EXPECT_TRUE(text::isWellFormed(text::repaired(bytes)));
    }
}

TEST(Text, RepairsInTheGivenRoomOnlyWhatNeedsIt)
{
    std::string room = "untouched";
    const std::string sound = "café";
    EXPECT_EQ(text::repaired(sound, room).data(), sound.data());
    EXPECT_EQ(room, "untouched");
    EXPECT_EQ(text::repaired("a\xFF", room), "a\uFFFD");
    EXPECT_EQ(room, "a\uFFFD");
}

TEST(Text, IsWellFormedAtEveryOffsetOfAWord)
{
    for (std::size_t ascii = 0; ascii < 20; ++ascii) {
        const std::string before(ascii, 'x');
        EXPECT_TRUE(text::isWellFormed(before + "é" + before));
        EXPECT_FALSE(text::isWellFormed(before + "\xC3" + before)) << ascii;
        EXPECT_FALSE(text::isWellFormed(before + "é" + before + "\x80")) << ascii;
    }
    EXPECT_TRUE(text::isWellFormed("\0\0"s));
}

TEST(Text, TrimsWhiteSpaceAndNewlinesOfUnicode)
{
    const std::string spaces = "\t\n\v\f\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000";
    EXPECT_EQ(text::trimmed(spaces + "a b" + spaces), "a b");
    EXPECT_EQ(text::trimmed(spaces), "");
    EXPECT_EQ(text::trimmed(""), "");
    EXPECT_EQ(text::trimmed("\u3000é\u3000"), "é");
}

TEST(Text, KeepsWhatIsNoWhiteSpace)
{
    for (const std::string kept : {"\u200B", "\uFEFF", "\u180E", "\x1F", "\u2060"})
        EXPECT_EQ(text::trimmed(kept), kept);
    EXPECT_EQ(text::trimmed("\0 a \0"s), "\0 a \0"s);
}

TEST(Text, LowerCasesByUnicodesFullMappings)
{
    EXPECT_EQ(text::lowercased("ÄRGER İ ΣΑΣ"), "ärger i̇ σας");
    EXPECT_EQ(text::lowercased("I"), "i"); // in every user's language
}

TEST(Text, KnowsDecimalDigitsOfAllScripts)
{
    EXPECT_TRUE(text::isDecimalDigit(U'7'));
    EXPECT_TRUE(text::isDecimalDigit(U'٣'));
    EXPECT_FALSE(text::isDecimalDigit(U'½'));
    EXPECT_FALSE(text::isDecimalDigit(U'x'));
}

TEST(Text, CutsBetweenUserPerceivedCharacters)
{
    struct Case {
        std::string name, text;
        std::size_t count;
        std::string prefix;
    };
    const std::string family = "👨‍👩‍👧‍👦", flag = "🇩🇪", wave = "👋🏽", accent = "é", syllable = "각";
    const std::vector<Case> cases = {
        {"shorter", "abc", 4, "abc"},
        {"exact", "abc", 3, "abc"},
        {"longer", "abcd", 3, "abc"},
        {"nothing wanted", "abc", 0, ""},
        {"nothing there", "", 3, ""},
        {"two bytes a letter", "éééé", 2, "éé"},
        {"joined emoji", family + family + family, 2, family + family},
        {"flags", flag + flag + flag, 2, flag + flag},
        {"skin tone", "a" + wave + "b", 2, "a" + wave},
        {"combining accent", accent + accent + "x", 2, accent + accent},
        {"syllable of parts", syllable + syllable, 1, syllable},
        {"line break of two", "a\r\nb", 2, "a\r\n"},
        {"fewer characters than bytes", family, 5, family},
    };
    for (const auto& [name, text, count, prefix] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(text::prefixOfCharacters(text, count), prefix);
    }
}

TEST(Text, AppendsScalars)
{
    std::string text = "a";
    for (const char32_t scalar : {U'é', U'東', U'😀', U'\0'}) text::append(text, scalar);
    EXPECT_EQ(text, "aé東😀\0"s);
    text.clear();
    text::append(text, 0xD800);
    text::append(text, 0x110000);
    EXPECT_EQ(text, "\uFFFD\uFFFD");
}

TEST(Text, ListsScalars)
{
    EXPECT_EQ(text::scalars("aé\xFF😀"), U"aé\uFFFD😀");
}

} // namespace
} // namespace vorn
