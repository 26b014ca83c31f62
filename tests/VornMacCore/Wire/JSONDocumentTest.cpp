#include "VornMacCore/Wire/JSONObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::string_literals;

/// The complaint of `parse`; "" if it accepts `text`.
std::string complaint(std::string_view text)
{
    try {
        JSONObject::parse(text);
        return "";
    } catch (const UndecodableJSON& error) {
        return error.what();
    }
}

std::string repeated(std::string_view part, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

struct Refusal {
    const char* name;
    std::string text;
    const char* complaint; ///< its beginning; the exact position is up to the parser
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal)
{
    return out << refusal.name;
}

class JSONRefusals : public testing::TestWithParam<Refusal> {};

TEST_P(JSONRefusals, NameThePlaceOnly)
{
    EXPECT_THAT(complaint(GetParam().text), testing::StartsWith(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    JSONDocument, JSONRefusals,
    testing::Values(Refusal{"Nothing", "", "not JSON at byte "}, //
                    Refusal{"Words", "<html>", "not JSON at byte "},
                    Refusal{"AnUnfinishedObject", R"({"token":"s3cret)", "not JSON at byte "},
                    Refusal{"AMissingComma", R"({"a":1 "b":2})", "not JSON at byte "},
                    Refusal{"ATrailingComma", R"({"a":1,})", "not JSON at byte "},
                    Refusal{"AComment", R"({}/* */)", "not JSON at byte "},
                    Refusal{"SingleQuotes", R"({'a':1})", "not JSON at byte "},
                    Refusal{"ALeadingZero", R"({"a":01})", "not JSON at byte "},
                    Refusal{"APlusSign", R"({"a":+1})", "not JSON at byte "},
                    Refusal{"NotANumber", R"({"a":NaN})", "not JSON at byte "},
                    Refusal{"AnEndlessNumber", R"({"a":1e400})", "not JSON at byte "},
                    Refusal{"MoreAfterTheEnd", R"({} {})", "not JSON at byte "},
                    Refusal{"ANULAfterTheEnd", "{}\0{}"s, "not JSON at byte "},
                    Refusal{"ANULWithinText", "{\"a\":\"\0\"}"s, "not JSON at byte "},
                    Refusal{"IllFormedUTF8", "{\"a\":\"\xC0\xAF\"}", "not JSON at byte "},
                    Refusal{"AnEncodedSurrogate", "{\"a\":\"\xED\xA0\x80\"}", "not JSON at byte "},
                    Refusal{"ALoneHighSurrogate", R"({"a":"\uD83D"})", "not JSON at byte "},
                    Refusal{"ALoneLowSurrogate", R"({"a":"\uDE00"})", "not JSON at byte "},
                    Refusal{"SwappedSurrogates", R"({"a":"\uDE00\uD83D"})", "not JSON at byte "},
                    Refusal{"UTF16", "\xFF\xFE{\0}\0"s, "not JSON at byte "},
                    Refusal{"TwoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF{}", "not JSON at byte "},
                    Refusal{"AKeyThatStandsTwice", R"({"a":1,"a":1})", "duplicate key in an object"},
                    Refusal{"AnUnknownKeyThatStandsTwice", R"({"x":{"b":null,"b":2}})", "duplicate key in an object"},
                    Refusal{"AnEscapedKeyThatStandsTwice", R"({"a":1,"\u0061":1})", "duplicate key in an object"},
                    Refusal{"AnArray", "[]", "expected an object, found array"},
                    Refusal{"Text", R"("{}")", "expected an object, found string"},
                    Refusal{"ANumber", "1", "expected an object, found number"},
                    Refusal{"Null", "null", "expected an object, found null"}),
    testing::PrintToStringParamName());

TEST(JSONDocument, SaysWhereItIsDamaged)
{
    EXPECT_EQ(complaint(R"({"a":1,"b":tru})"), "not JSON at byte 15");
}

TEST(JSONDocument, TakesWhatTheStandardAllows)
{
    for (const std::string& text : {"{}"s, " \t\r\n{ } \n"s, "\xEF\xBB\xBF{}"s, R"({"":0})"s, R"({"a":[1,[],{}]})"s,
                                    R"({"a":{"b":1},"c":{"b":1}})"s, R"({"x":[{"a":1},{"a":2}]})"s}) {
        EXPECT_EQ(complaint(text), "") << text;
    }
}

TEST(JSONDocument, ReadsEscapesAndEveryPlaneOfUnicode)
{
    const auto object = JSONObject::parse(R"({"a":"\u00e9\uD83D\uDE00\u0000\/\n","b":"é😀","\u0063":"c"})");
    EXPECT_EQ(object.string("a"), "é😀\0/\n"s);
    EXPECT_EQ(object.string("b"), "é😀");
    EXPECT_EQ(object.string("c"), "c");
}

TEST(JSONDocument, NestsSixtyFourDeep)
{
    EXPECT_EQ(complaint(R"({"a":)" + repeated("[", 63) + repeated("]", 63) + "}"), "");
    EXPECT_EQ(complaint(repeated(R"({"a":)", 63) + "{}" + repeated("}", 63)), "");
    EXPECT_EQ(complaint(R"({"a":)" + repeated("[", 64) + repeated("]", 64) + "}"), "nested too deeply");
    EXPECT_EQ(complaint(repeated(R"({"a":)", 64) + "{}" + repeated("}", 64)), "nested too deeply");
    EXPECT_EQ(complaint(repeated(R"([{"a":)", 32) + "[]"), "nested too deeply");
}

TEST(JSONDocument, CountsDepthNotNumberOfObjects)
{
    EXPECT_EQ(complaint(R"({"a":[)" + repeated("{},", 100) + "[]]}"), "");
}

TEST(JSONDocument, IsRefusedForItsDepthBeforeTheRestIsRead)
{
    EXPECT_EQ(complaint(repeated("[", 65) + "\xFF not JSON"), "nested too deeply");
    EXPECT_EQ(complaint(repeated("[", 4'000'000)), "nested too deeply");
}

TEST(JSONDocument, HasAtMostFiftyThousandValues)
{
    constexpr int around = 2; // the object and its array
    const auto listOf = [](int count) { return R"({"a":[{})" + repeated(",{}", count - 1) + "]}"; };
    EXPECT_EQ(complaint(listOf(JSONObject::maxValues - around)), "");
    EXPECT_EQ(complaint(listOf(JSONObject::maxValues - around + 1)), "too many values");
    EXPECT_EQ(complaint(R"({"a":[1)" + repeated(",1", 1'000'000)), "too many values") << "before the rest is read";
}

TEST(JSONDocument, HasAtMostFourMebibytes)
{
    const std::string head = R"({"a":"b"})";
    const std::string padded = head + std::string(JSONObject::maxTextSize - head.size(), ' ');
    EXPECT_EQ(complaint(padded), "");
    EXPECT_EQ(complaint(padded + " "), "too large");
}

TEST(JSONDocument, NeverQuotesTheText)
{
    for (const char* text : {R"({"token":"canary" "canary")", R"({"token":canary})", R"({"canary":1,"canary":2})",
                             R"({"token":"canary\uD83D canary"})", R"("canary")"}) {
        EXPECT_THAT(complaint(text), testing::Not(testing::HasSubstr("canary"))) << text;
        EXPECT_NE(complaint(text), "") << text;
    }
}

} // namespace
} // namespace vorn
