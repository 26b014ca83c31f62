#include "Platform/Base/PrintableText.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

TEST(PrintableText, KeepsWhatPeopleWrite)
{
    for (const char* text :
         {"", "Sam Rivera", "Zoë Ångström", "山田 太郎", "👩‍👩‍👧 family", "\"quotes\" & <tags>"}) {
        EXPECT_EQ(printable(text), text);
    }
}

TEST(PrintableText, KeepsCommandsFromTheTerminal)
{
    struct Case {
        const char* name;
        std::string foreign;
        std::string printed;
    };
    const std::vector<Case> cases = {
        {"colour", "\x1B[31mred", "\uFFFD[31mred"},
        {"title", "\x1B]0;mine\x07x", "\uFFFD]0;mine\uFFFDx"},
        {"control sequence of one byte in C1", "\u009B2J", "\uFFFD2J"},
        {"lone byte of C1", "\x9B"s + "2J", "\uFFFD2J"},
        {"lines", "a\nb\r\nc", "a\uFFFDb\uFFFD\uFFFDc"},
        {"line separator", "a\u2028b", "a\uFFFDb"},
        {"tab and backspace", "a\tb\b", "a\uFFFDb\uFFFD"},
        {"NUL", "a\0b"s, "a\uFFFDb"},
        {"delete", "\x7F", "\uFFFD"},
        {"reordering", "\u202Egpj.exe\u202C\u2066x\u2069\u200F", "\uFFFDgpj.exe\uFFFD\uFFFDx\uFFFD\uFFFD"},
        {"marks of both directions", "\u061Ca\u200Eb\u202Ac\u206Ad", "\uFFFDa\uFFFDb\uFFFDc\uFFFDd"},
        {"ill-formed", "a\xFFz", "a\uFFFDz"},
        {"spaces without width", "pay\u200Bpal\uFEFF.com\u2060\u00AD", "paypal.com"},
        {"hidden text in tags", "Sam\U000E0001\U000E0041\U000E007F", "Sam"},
        {"beyond the tags", "\U000E0080", "\U000E0080"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(printable(each.foreign), each.printed);
    }
}

TEST(PrintableText, CutsWhatWouldFillTheScreen)
{
    EXPECT_EQ(printable(std::string(300, 'x')), std::string(300, 'x'));
    EXPECT_EQ(printable(std::string(301, 'x')), std::string(300, 'x') + "…");
}

TEST(PrintableText, IsWholeWhereAllOfItIsAskedFor)
{
    EXPECT_EQ(printableWhole(std::string(301, 'x') + "\x1B[2J"), std::string(301, 'x') + "\uFFFD[2J");
}

} // namespace
} // namespace vorn
