#include "NimbrelExportKit/Messages/AttributedBodyDecoder.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

std::optional<std::string> decode(const std::string& bytes)
{
    const auto text = AttributedBodyDecoder::decode(bytesOf(bytes));
    return text ? std::optional(std::string(*text)) : std::nullopt;
}

const std::string header = "NSString\x01\x94\x84\x01+";

TEST(AttributedBodyDecoder, ReadsTheTextBehindTheUsualHeader)
{
    EXPECT_EQ(decode(header + "\x05Hello"), "Hello");
}

TEST(AttributedBodyDecoder, ReadsEveryFormOfLength)
{
    const auto text = [](std::size_t length) { return std::string(length, 't'); };
    EXPECT_EQ(decode(header + "\0"s), "");
    EXPECT_EQ(decode(header + "\x7F" + text(127)), text(127));
    EXPECT_EQ(decode(header + "\x81\x80\0"s + text(128)), text(128));
    EXPECT_EQ(decode(header + "\x81\xFF\0"s + text(255)), text(255));
    EXPECT_EQ(decode(header + "\x81\0\x01"s + text(256)), text(256));
    EXPECT_EQ(decode(header + "\x81\x2C\x01"s + text(300)), text(300));
    EXPECT_EQ(decode(header + "\x81\xFF\x7F" + text(32767)), text(32767));
    EXPECT_EQ(decode(header + "\x81\0\x80"s + text(32768)), text(32768));
    EXPECT_EQ(decode(header + "\x81\xFF\xFF" + text(65535)), text(65535));
    EXPECT_EQ(decode(header + "\x82\0\0\x01\0"s + text(65536)), text(65536));
}

TEST(AttributedBodyDecoder, TakesOnlyWhatTheLengthSays)
{
    EXPECT_EQ(decode(header + "\x05Hello and more"), "Hello");
}

TEST(AttributedBodyDecoder, RefusesALengthPastTheEnd)
{
    EXPECT_EQ(decode(header + "\x06Hello"), std::nullopt);
    EXPECT_EQ(decode(header + "\x81\x2C\x01short"s), std::nullopt);
    EXPECT_EQ(decode(header + "\x82\xFF\xFF\xFF\xFFshort"), std::nullopt); // 4,294,967,295
}

TEST(AttributedBodyDecoder, RefusesALengthThatIsCutShort)
{
    for (const std::string& cut : {""s, "\x81"s, "\x81\x01"s, "\x82"s, "\x82\x01\0\0"s}) {
        EXPECT_EQ(decode(header + cut), std::nullopt) << cut.size();
    }
}

TEST(AttributedBodyDecoder, RefusesUnknownLengthTags)
{
    for (int tag = 0x80; tag <= 0xFF; ++tag) {
        if (tag == 0x81 || tag == 0x82) continue;
        EXPECT_EQ(decode(header + static_cast<char>(tag) + std::string(70'000, 'x')), std::nullopt) << tag;
    }
}

TEST(AttributedBodyDecoder, FindsThePlusOfOtherHeadersWithin24Bytes)
{
    EXPECT_EQ(decode("NSString\x01\x95\x84\x01+\x05Hello"), "Hello"); // a mutable string
    EXPECT_EQ(decode("NSString" + std::string(23, '\x01') + "+\x05Hello"), "Hello");
    EXPECT_EQ(decode("NSString" + std::string(24, '\x01') + "+\x05Hello"), std::nullopt);
    EXPECT_EQ(decode("NSString+\x05Hello"), "Hello");
    EXPECT_EQ(decode("NSString\x01\x94\x84\x01"), std::nullopt);
}

TEST(AttributedBodyDecoder, FindsNothingWithoutAString)
{
    EXPECT_EQ(decode(""), std::nullopt);
    EXPECT_EQ(decode("NSStrin"), std::nullopt);
    EXPECT_EQ(decode("NSDictionary\x01\x94\x84\x01+\x05Hello"), std::nullopt);
    EXPECT_EQ(decode("NSString"), std::nullopt);
}

TEST(AttributedBodyDecoder, DecodesTheFirstStringAlone)
{
    EXPECT_EQ(decode(header + "\x05" + "First" + header + "\x06Second"), "First");
    EXPECT_EQ(decode("NSString" + std::string(30, ' ') + header + "\x06Second"), std::nullopt);
}

TEST(AttributedBodyDecoder, RefusesIllFormedText)
{
    EXPECT_EQ(decode(header + "\x03" + "a\xFF" + "b"), std::nullopt);
    EXPECT_EQ(decode(header + "\x02" + "\xF0\x9F\x98\x80"), std::nullopt); // the length cuts a character
}

TEST(AttributedBodyDecoder, KeepsNulsAndSpaces)
{
    EXPECT_EQ(decode(header + "\x05" + " a\0b "s), " a\0b "s);
}

} // namespace
} // namespace vorn
