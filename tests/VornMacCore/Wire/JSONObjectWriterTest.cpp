#include "VornMacCore/Wire/JSONObjectWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace vorn {
namespace {

std::string complaint(const std::function<void(JSONObjectWriter&)>& write)
{
    JSONObjectWriter object;
    try {
        write(object);
        return "wrote " + object.text();
    } catch (const UnencodableJSON& error) {
        return error.what();
    }
}

TEST(JSONObjectWriter, KeepsTheOrderOfItsKeys)
{
    JSONObjectWriter inner;
    inner.integer("z", 1);
    inner.integer("a", 2);
    JSONObjectWriter object;
    object.string("name", "Mac");
    object.object("inner", std::move(inner));
    object.strings("list", {"y", "x"});
    object.number("dollars", 12.5);
    EXPECT_EQ(object.text(), R"({"name":"Mac","inner":{"z":1,"a":2},"list":["y","x"],"dollars":12.5})");
}

TEST(JSONObjectWriter, WritesEmptyObjectsAndArrays)
{
    JSONObjectWriter object;
    EXPECT_EQ(object.text(), "{}");
    object.object("object", JSONObjectWriter());
    object.objects("objects", {});
    object.strings("strings", {});
    EXPECT_EQ(object.text(), R"({"object":{},"objects":[],"strings":[]})");
}

TEST(JSONObjectWriter, WritesArraysOfObjects)
{
    std::vector<JSONObjectWriter> objects(2);
    objects[0].integer("n", 2);
    objects[1].integer("n", 1);
    JSONObjectWriter object;
    object.objects("objects", std::move(objects));
    EXPECT_EQ(object.text(), R"({"objects":[{"n":2},{"n":1}]})");
}

TEST(JSONObjectWriter, WritesIntegersExactly)
{
    JSONObjectWriter object;
    object.integer("most", std::numeric_limits<std::int64_t>::max());
    object.integer("least", std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(object.text(), R"({"most":9223372036854775807,"least":-9223372036854775808})");
}

TEST(JSONObjectWriter, EscapesWhatJSONMust)
{
    JSONObjectWriter object;
    object.string("text", std::string("\"\\/\b\f\n\r\t\x01\0é😀", 16));
    EXPECT_EQ(object.text(), R"({"text":"\"\\/\b\f\n\r\t\u0001\u0000é😀"})");
}

TEST(JSONObjectWriter, RefusesWhatJSONCannotCarry)
{
    EXPECT_EQ(complaint([](auto& object) { object.string("deviceName", "canary\xFF"); }),
              "deviceName: ill-formed UTF-8");
    EXPECT_EQ(complaint([](auto& object) { object.strings("handles", {"fine", "\xED\xA0\x80"}); }),
              "handles: ill-formed UTF-8");
    EXPECT_EQ(complaint([](auto& object) { object.number("sum", std::numeric_limits<double>::infinity()); }),
              "sum: not a finite number");
    EXPECT_EQ(complaint([](auto& object) { object.number("sum", std::numeric_limits<double>::quiet_NaN()); }),
              "sum: not a finite number");
}

} // namespace
} // namespace vorn
