#include "VornMacCore/Wire/JSONObject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

namespace vorn {
namespace {

using Read = std::function<void(const JSONObject&)>;

std::string complaint(const JSONObject& object, const Read& read)
{
    try {
        read(object);
        return "";
    } catch (const UndecodableJSON& error) {
        return error.what();
    }
}

struct Accessor {
    const char* name;
    Read read; ///< the value of "key"
    const char* expected;
    std::vector<std::string_view> accepted; ///< the types of values that it takes
};

std::ostream& operator<<(std::ostream& out, const Accessor& accessor)
{
    return out << accessor.name;
}

struct Sample {
    std::string_view type;
    const char *value, *found;
};

const std::vector<Sample> samples = {
    {"null", "null", "null"},
    {"boolean", "true", "boolean"},
    {"boolean", "false", "boolean"},
    {"integer", "0", "number"},
    {"integer", "-0", "number"},
    {"integer", "9223372036854775807", "number"},
    {"integer", "-9223372036854775808", "number"},
    {"large", "9223372036854775808", "number"},
    {"large", "-9223372036854775809", "number"},
    {"large", "18446744073709551616", "number"},
    {"fraction", "1.0", "number"},
    {"fraction", "1e2", "number"},
    {"string", R"("7")", "string"},
    {"string", R"("")", "string"},
    {"array", "[]", "array"},
    {"object", "{}", "object"},
};

class JSONAccessors : public testing::TestWithParam<Accessor> {};

TEST_P(JSONAccessors, ConvertNothing)
{
    const Accessor& accessor = GetParam();
    for (const auto& [type, value, found] : samples) {
        const auto object = JSONObject::parse(std::string(R"({"key":)") + value + "}");
        const bool accepted = std::ranges::find(accessor.accepted, type) != accessor.accepted.end();
        EXPECT_EQ(complaint(object, accessor.read),
                  accepted ? "" : std::string("key: expected ") + accessor.expected + ", found " + found)
            << value;
    }
}

TEST_P(JSONAccessors, MissAKeyThatIsNotThere)
{
    const auto object = JSONObject::parse(R"({"Key":"other case","outer":{"key":1}})");
    EXPECT_EQ(complaint(object, GetParam().read),
              std::string("key: expected ") + GetParam().expected + ", found nothing");
}

INSTANTIATE_TEST_SUITE_P(
    JSONObject, JSONAccessors,
    testing::Values(
        Accessor{"String", [](const JSONObject& object) { object.string("key"); }, "a string", {"string"}},
        Accessor{"Integer", [](const JSONObject& object) { object.integer("key"); }, "a 64-bit integer", {"integer"}},
        Accessor{"Number",
                 [](const JSONObject& object) { object.number("key"); },
                 "a number",
                 {"integer", "large", "fraction"}},
        Accessor{"Strings", [](const JSONObject& object) { object.strings("key"); }, "an array", {"array"}},
        Accessor{"Object", [](const JSONObject& object) { object.object("key"); }, "an object", {"object"}},
        Accessor{"Objects",
                 [](const JSONObject& object) { object.forEachObject("key", [](const JSONObject&) {}); },
                 "an array",
                 {"array"}}),
    testing::PrintToStringParamName());

TEST(JSONObject, ReadsIntegersExactly)
{
    const auto object = JSONObject::parse(
        R"({"most":9223372036854775807,"least":-9223372036854775808,"beyond 32 bits":4294967296,"odd":9007199254740993})");
    EXPECT_EQ(object.integer("most"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(object.integer("least"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(object.integer("beyond 32 bits"), 4'294'967'296);
    EXPECT_EQ(object.integer("odd"), 9'007'199'254'740'993); // a double would lose the last bit
}

TEST(JSONObject, ReadsAnyNumberAsADouble)
{
    const auto object = JSONObject::parse(R"({"a":3,"b":12.5,"c":-1e-2,"d":18446744073709551616,"e":0.1})");
    EXPECT_EQ(object.number("a"), 3);
    EXPECT_EQ(object.number("b"), 12.5);
    EXPECT_EQ(object.number("c"), -0.01);
    EXPECT_EQ(object.number("d"), 18'446'744'073'709'551'616.0);
    EXPECT_EQ(object.number("e"), 0.1);
}

TEST(JSONObject, HasAKeyUnlessItIsNull)
{
    const auto object = JSONObject::parse(R"({"null":null,"false":false,"empty":""})");
    EXPECT_FALSE(object.has("missing"));
    EXPECT_FALSE(object.has("null"));
    EXPECT_TRUE(object.has("false"));
    EXPECT_TRUE(object.has("empty"));
}

TEST(JSONObject, ReadsArraysInOrder)
{
    const auto object = JSONObject::parse(R"({"names":["b","a",""],"none":[],"objects":[{"n":2},{"n":1}]})");
    EXPECT_EQ(object.strings("names"), (std::vector<std::string>{"b", "a", ""}));
    EXPECT_EQ(object.strings("none"), std::vector<std::string>{});
    std::vector<std::int64_t> numbers;
    object.forEachObject("objects", [&](const JSONObject& element) { numbers.push_back(element.integer("n")); });
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{2, 1}));
}

TEST(JSONObject, NamesTheWholePathOfWhatItMisses)
{
    const auto object = JSONObject::parse(
        R"({"quest":{"rewardUsd":"12"},"handles":["a",null],"assets":[{"parts":[{},{"url":1}]}],"mixed":[{},1]})");
    EXPECT_EQ(complaint(object, [](const JSONObject& it) { it.object("quest").number("rewardUsd"); }),
              "quest.rewardUsd: expected a number, found string");
    EXPECT_EQ(complaint(object, [](const JSONObject& it) { it.strings("handles"); }),
              "handles[1]: expected a string, found null");
    const auto readUrls = [](const JSONObject& it) {
        it.forEachObject("assets", [](const JSONObject& asset) {
            asset.forEachObject("parts", [](const JSONObject& part) {
                if (part.has("url")) part.string("url");
            });
        });
    };
    EXPECT_EQ(complaint(object, readUrls), "assets[0].parts[1].url: expected a string, found number");
    EXPECT_EQ(complaint(object, [](const JSONObject& it) { it.forEachObject("mixed", [](const JSONObject&) {}); }),
              "mixed[1]: expected an object, found number");
}

TEST(JSONObject, OutlivesTheDocumentItIsPartOf)
{
    std::optional<JSONObject> document = JSONObject::parse(R"({"a":{"b":{"c":"here"}}})");
    const JSONObject inner = document->object("a").object("b");
    document.reset();
    EXPECT_EQ(inner.string("c"), "here");
}

} // namespace
} // namespace vorn
