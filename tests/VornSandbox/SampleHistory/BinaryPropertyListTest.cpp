#include "VornSandbox/SampleHistory/BinaryPropertyList.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;

std::string written(const PropertyList& value)
{
    return std::string(textOf(binaryPropertyList(value)));
}

/// Offsets and references of one byte, `objects` objects with the last as root, the offset table at `table`.
std::string trailer(char objects, char table)
{
    return "\0\0\0\0\0\0\x01\x01"s + std::string(7, '\0') + objects + std::string(7, '\0') +
           static_cast<char>(objects - 1) + std::string(7, '\0') + table;
}

TEST(BinaryPropertyList, ADictionaryFollowsItsKeysAndValues)
{
    EXPECT_EQ(written({{"ust", true}}), "bplist00\x53ust\x09\xD1\x00\x01"s + "\x08\x0C\x0D"s + trailer(3, 16));
}

TEST(BinaryPropertyList, WritesEveryKindOfValue)
{
    EXPECT_THAT(written(false), HasSubstr("bplist00\x08\x08"s));
    EXPECT_THAT(written(7), HasSubstr("bplist00\x10\x07"s));
    EXPECT_THAT(written(300), HasSubstr("bplist00\x11\x01\x2C"s));
    EXPECT_THAT(written(-1), HasSubstr("bplist00\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s));
    EXPECT_THAT(written(dataOf(ByteBuffer(2, std::byte{9}))), HasSubstr("bplist00\x42\x09\x09"s));
    EXPECT_THAT(written("0123456789ABCDEF"), HasSubstr("bplist00\x5F\x10\x10"
                                                       "0123456789ABCDEF"s));
    EXPECT_THAT(written("é🎉"), HasSubstr("bplist00\x63\x00\xE9\xD8\x3C\xDF\x89"s));
    EXPECT_THAT(written(PropertyList::array({true, false})), HasSubstr("bplist00\x09\x08\xA2\x00\x01"s));
}

TEST(BinaryPropertyList, OffsetsGrowWithTheContent)
{
    const std::string large = written(PropertyList::array({dataOf(ByteBuffer(70'000, std::byte{1})), true}));
    EXPECT_EQ(static_cast<int>(large[large.size() - 26]), 4);
    const std::string small = written(PropertyList::array({dataOf(ByteBuffer(300, std::byte{1})), true}));
    EXPECT_EQ(static_cast<int>(small[small.size() - 26]), 2);
}

} // namespace
} // namespace vorn
