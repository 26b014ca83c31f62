#include "VornSandbox/SampleHistory/AttributedBody.h"

#include <gmock/gmock.h>

#include <array>
#include <string>

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
    const std::string blob = written("Hello", AttributedBodyKind::mutableWithFixedText);
    EXPECT_THAT(blob, HasSubstr("\x85\x92\x84\x84\x84\x08NSString\x01\x95\x84\x01+\x05Hello\x86\x84\x02iI"s));
    EXPECT_THAT(blob, HasSubstr("NSDictionary\0\x95\x84\x01i\x01\x92\x84\x97\x97"s + partName));
    EXPECT_TRUE(blob.ends_with("NSValue\0\x95\x84\x01*\x84\x9A\x9A\0\x86\x86\x86"s));
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
