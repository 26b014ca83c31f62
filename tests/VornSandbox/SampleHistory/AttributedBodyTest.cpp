#include "VornSandbox/SampleHistory/AttributedBody.h"

#include <gmock/gmock.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace vorn {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;

std::string written(std::string_view text, AttributedBodyKind kind)
{
    return std::string(textOf(attributedBody(text, kind)));
}

const std::string partName = "\x1D__kIMMessagePartAttributeName"s;

TEST(AttributedBody, ImmutableTextIsWrittenByteForByteAsMessagesDoes)
{
    const std::string expected =
        "\x04\x0Bstreamtyped\x81\xE8\x03\x84\x01@\x84\x84\x84\x12NSAttributedString\0\x84\x84\x08NSObject\0\x85"s
        "\x92\x84\x84\x84\x08NSString\x01\x94\x84\x01+\x05Hello\x86"s
        "\x84\x02iI\x01\x05\x92\x84\x84\x84\x0CNSDictionary\0\x94\x84\x01i\x01"s
        "\x92\x84\x96\x96"s +
        partName +
        "\x86"s
        "\x92\x84\x84\x84\x08NSNumber\0\x84\x84\x07NSValue\0\x94\x84\x01*\x84\x99\x99\0\x86\x86\x86"s;
    EXPECT_EQ(written("Hello", AttributedBodyKind::immutableText), expected);
}

TEST(AttributedBody, MutableTextNamesTheClassesAboveEachClass)
{
    const std::string expected =
        "\x04\x0Bstreamtyped\x81\xE8\x03\x84\x01@\x84\x84\x84\x19NSMutableAttributedString\0\x84\x84\x12NSAttributedString\0"s
        "\x84\x84\x08NSObject\0\x85"s
        "\x92\x84\x84\x84\x0FNSMutableString\x01\x84\x84\x08NSString\x01\x95\x84\x01+\x05Hello\x86"s
        "\x84\x02iI\x01\x05\x92\x84\x84\x84\x0CNSDictionary\0\x95\x84\x01i\x01"s
        "\x92\x84\x98\x98"s +
        partName +
        "\x86"s
        "\x92\x84\x84\x84\x08NSNumber\0\x84\x84\x07NSValue\0\x95\x84\x01*\x84\x9B\x9B\0\x86\x86\x86"s;
    EXPECT_EQ(written("Hello", AttributedBodyKind::mutableText), expected);
}

TEST(AttributedBody, AMutableBodyMayHoldFixedText)
{
    EXPECT_THAT(written("Hello", AttributedBodyKind::mutableWithFixedText),
                HasSubstr("\x85\x92\x84\x84\x84\x08NSString\x01\x95\x84\x01+\x05Hello\x86\x84\x02iI"s));
}

TEST(AttributedBody, TheLengthTakesOneThreeOrFiveBytes)
{
    struct Case {
        std::size_t length;
        std::string head;
    };
    const std::array cases{
        Case{0, "\0"s},
        Case{1, "\x01"s},
        Case{127, "\x7F"s},
        Case{128, "\x81\x80\x00"s},
        Case{255, "\x81\xFF\x00"s},
        Case{256, "\x81\x00\x01"s},
        Case{32'767, "\x81\xFF\x7F"s},
        Case{32'768, "\x82\x00\x80\x00\x00"s}, // beyond a signed 16-bit integer
        Case{65'535, "\x82\xFF\xFF\x00\x00"s},
        Case{65'536, "\x82\x00\x00\x01\x00"s},
    };
    for (const auto& [length, head] : cases) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        std::string expected = "NSString\x01\x94\x84\x01+"s;
        expected.append(head).append(text);
        if (length == 0)
            expected.append("\x86\x86"s);
        else
            expected.append("\x86\x84\x02iI\x01"s).append(head);
        EXPECT_NE(written(text, AttributedBodyKind::immutableText).find(expected), std::string::npos);
    }
}

TEST(AttributedBody, ALaterRunNamesClassesAndTypesByTheirLabels)
{
    const TextAttribute part{"__kIMMessagePartAttributeName", std::int64_t{0}};
    const std::array runs{AttributeRun{1, {part}}, AttributeRun{1, {part}}};
    const std::string blob(textOf(attributedBody("ab", AttributedBodyKind::immutableText, runs)));
    EXPECT_TRUE(blob.ends_with("\x97\x02\x01\x92\x84\x98\x99\x01\x92\x84\x96\x96"s + partName +
                               "\x86\x92\x84\x9B\x9C\x9D\x99\0\x86\x86\x86"s));
}

TEST(AttributedBody, HoldsTextsLinksAndData)
{
    const AttributeRun run{4,
                           {{"__kIMFilenameAttributeName", "a.jpg"s},
                            {"__kIMLinkAttributeName", AttributeURL{"https://example.com"}},
                            {"__kIMDataDetectedAttributeName", ByteBuffer{std::byte{0xAB}, std::byte{0xCD}}},
                            {"__kIMBaseWritingDirectionAttributeName", std::int64_t{-1}}}};
    const std::string blob(textOf(attributedBody("text", AttributedBodyKind::immutableText, std::span(&run, 1))));
    EXPECT_THAT(blob, HasSubstr("\x92\x84\x96\x96\x1A__kIMFilenameAttributeName\x86\x92\x84\x96\x96\x05"
                                "a.jpg\x86"s));
    EXPECT_THAT(blob, HasSubstr("\x05NSURL\0\x94\x84\x01"
                                "c\0\x92\x84\x96\x96\x13https://example.com\x86\x86"s));
    EXPECT_THAT(blob, HasSubstr("\x06NSData\0\x94\x99\x02\x84\x04[2c]\xAB\xCD\x86"s));
    EXPECT_TRUE(blob.ends_with("\x84\x01*\x84\x84\x01q\xA1\xFF\x86\x86\x86"s)) << "a negative number has the type q";
}

/// What follows the encoding of a number that is the only attribute.
std::string writtenNumber(std::int64_t value)
{
    const AttributeRun run{1, {{"number", value}}};
    const std::string blob(textOf(attributedBody("a", AttributedBodyKind::immutableText, std::span(&run, 1))));
    const std::string before = value < 0 ? "\x84\x01*\x84\x84\x01q\x9D"s : "\x84\x01*\x84\x99\x99"s;
    const std::string after = "\x86\x86\x86"s;
    const auto at = blob.find(before);
    EXPECT_NE(at, std::string::npos);
    EXPECT_TRUE(blob.ends_with(after));
    return blob.substr(at + before.size(), blob.size() - at - before.size() - after.size());
}

TEST(AttributedBody, ANumberTakesAsFewBytesAsItCan)
{
    const std::array cases{
        std::pair{std::int64_t{0}, "\0"s},
        std::pair{std::int64_t{127}, "\x7F"s},
        std::pair{std::int64_t{128}, "\x81\x80\0"s},
        std::pair{std::int64_t{-1}, "\xFF"s},
        std::pair{std::int64_t{-110}, "\x92"s},
        std::pair{std::int64_t{-111}, "\x81\x91\xFF"s}, // 0x91 and below are tags
        std::pair{std::int64_t{32'767}, "\x81\xFF\x7F"s},
        std::pair{std::int64_t{32'768}, "\x82\0\x80\0\0"s},
        std::pair{std::int64_t{-32'768}, "\x81\0\x80"s},
        std::pair{std::int64_t{-32'769}, "\x82\xFF\x7F\xFF\xFF"s},
        std::pair{std::int64_t{4'294'967'295}, "\x82\xFF\xFF\xFF\xFF"s},
    };
    for (const auto& [value, bytes] : cases) {
        SCOPED_TRACE(value);
        EXPECT_EQ(writtenNumber(value), bytes);
    }
    EXPECT_THROW(writtenNumber(4'294'967'296), std::out_of_range);
}

TEST(AttributedBody, DataOfEqualLengthShareTheirType)
{
    const ByteBuffer bytes{std::byte{1}, std::byte{2}};
    const AttributeRun run{1, {{"one", bytes}, {"two", bytes}}};
    const std::string blob(textOf(attributedBody("a", AttributedBodyKind::immutableText, std::span(&run, 1))));
    EXPECT_THAT(blob, HasSubstr("\x84\x04[2c]\x01\x02\x86"s));
    EXPECT_EQ(blob.find("[2c]"), blob.rfind("[2c]")) << "spelled out once";
    EXPECT_TRUE(blob.ends_with("\x01\x02\x86\x86\x86"s));
}

TEST(AttributedBody, LengthsOfRunsCountUTF16Units)
{
    EXPECT_EQ(utf16Length(""), 0U);
    EXPECT_EQ(utf16Length("abc"), 3U);
    EXPECT_EQ(utf16Length("é漢"), 2U);
    EXPECT_EQ(utf16Length("🎉"), 2U);
    EXPECT_EQ(utf16Length("👩‍💻"), 5U);
}

} // namespace
} // namespace vorn
