#include "NimbrelExportKit/Archive/JSONWriter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vorn {
namespace {

std::string written(std::string_view text)
{
    const ByteBuffer bytes = json::document([&](auto& to) { to.text(text); });
    return std::string(textOf(bytes));
}

std::string written(std::int64_t value)
{
    const ByteBuffer bytes = json::document([&](auto& to) { to.integer(value); });
    return std::string(textOf(bytes));
}

TEST(JSONWriter, EscapesWhatAStringCannotHold)
{
    const std::pair<std::string_view, const char*> cases[] = {
        {"\"", R"("\"")"},       {"\\", R"("\\")"},
        {"\b", R"("\b")"},       {"\f", R"("\f")"},
        {"\n", R"("\n")"},       {"\r", R"("\r")"},
        {"\t", R"("\t")"},       {std::string_view("\0", 1), R"("\u0000")"},
        {"\x01", R"("\u0001")"}, {"\x07", R"("\u0007")"},
        {"\x0B", R"("\u000b")"}, {"\x0E", R"("\u000e")"},
        {"\x0F", R"("\u000f")"}, {"\x10", R"("\u0010")"},
        {"\x1A", R"("\u001a")"}, {"\x1F", R"("\u001f")"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(written(text), expected);
}

TEST(JSONWriter, WritesEverythingElseAsItIs)
{
    for (const char* text : {"", " ", "/", "https://example.org/a?b=<c>&d='e'", "\x7F", "\xC2\x80", "é", "\u2028",
                             "\u2029", "\uFFFD", "\U0001F600", "\U0010FFFF"}) {
        EXPECT_EQ(written(text), '"' + std::string(text) + '"');
    }
}

TEST(JSONWriter, EscapesInTheMiddleOfAText)
{
    EXPECT_EQ(written("say \"hé\"\n\n\\/\x02!"), R"("say \"hé\"\n\n\\/\u0002!")");
    EXPECT_EQ(written("\n\n\n"), R"("\n\n\n")");
}

TEST(JSONWriter, WritesIntegersToTheirLimits)
{
    EXPECT_EQ(written(std::int64_t{0}), "0");
    EXPECT_EQ(written(std::int64_t{-1}), "-1");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(JSONWriter, WritesNullForAnAbsentText)
{
    const ByteBuffer bytes = json::document([](auto& to) {
        to.textOrNull(std::optional<std::string>());
        to.textOrNull(std::optional<std::string>(""));
        to.boolean(true);
        to.boolean(false);
    });
    EXPECT_EQ(textOf(bytes), R"(null""truefalse)");
}

TEST(JSONWriter, PutsCommasBetweenTheValuesOfAList)
{
    const auto list = [](const std::vector<std::int64_t>& values) {
        const ByteBuffer bytes =
            json::document([&](auto& to) { to.list(values, [&to](std::int64_t value) { to.integer(value); }); });
        return std::string(textOf(bytes));
    };
    EXPECT_EQ(list({}), "");
    EXPECT_EQ(list({1}), "1");
    EXPECT_EQ(list({1, 2, 3}), "1,2,3");
}

/// Texts are scanned in blocks and words, so this tries every length, start and position of a byte to escape.
TEST(JSONWriter, FindsAByteToEscapeWhereverItIs)
{
    for (const char found : {'"', '\\', '\0', '\n', '\x1F'}) {
        for (std::size_t size = 1; size < 80; ++size) {
            for (std::size_t at = 0; at < size; ++at) {
                std::string text(size, 'a');
                text[at] = found;
                if (at + 1 < size) text[at + 1] = size % 2 == 0 ? ' ' : '#'; // plain, but a borrow could mark it
                ASSERT_EQ(json::plainPrefix(text), at) << size;
                ASSERT_EQ(json::plainPrefix(std::string_view(text).substr(at + 1)), size - at - 1)
                    << at << " of " << size;
            }
        }
    }
}

TEST(JSONWriter, TakesNoOtherByteForOneToEscape)
{
    for (unsigned value = 0x20; value < 0x100; ++value) {
        if (value == '"' || value == '\\') continue;
        for (const std::size_t size : {1U, 7U, 8U, 9U, 31U, 32U, 33U, 64U}) {
            ASSERT_EQ(json::plainPrefix(std::string(size, static_cast<char>(value))), size) << value;
        }
    }
}

TEST(JSONWriterDeathTest, EndsTheProcessWhenTheSecondPassWritesLess)
{
    int calls = 0;
    const auto changing = [&calls](auto& to) { ++calls == 1 ? to.raw("12") : to.raw("1"); };
    EXPECT_DEATH(json::document(changing), "not as long as it was measured");
}

} // namespace
} // namespace vorn
