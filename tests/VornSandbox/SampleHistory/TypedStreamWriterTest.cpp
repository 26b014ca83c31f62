#include "VornSandbox/SampleHistory/TypedStreamWriter.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace vorn {
namespace {

using namespace std::string_literals;

const std::string head = "\x04\x0Bstreamtyped\x81\xE8\x03"s;

std::string contentOf(TypedStreamWriter& stream)
{
    const ByteBuffer buffer = stream.take();
    EXPECT_TRUE(textOf(buffer).starts_with(head));
    return std::string(textOf(buffer).substr(head.size()));
}

TEST(TypedStreamWriter, AnIntegerTakesAsFewBytesAsItCan)
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
        TypedStreamWriter stream;
        stream.integer(value);
        EXPECT_EQ(contentOf(stream), bytes);
    }
    TypedStreamWriter stream;
    EXPECT_THROW(stream.integer(4'294'967'296), std::out_of_range);
}

TEST(TypedStreamWriter, ATypeIsSpelledOutOnce)
{
    TypedStreamWriter stream;
    stream.type("i");
    stream.type("+");
    stream.type("i");
    EXPECT_EQ(contentOf(stream), "\x84\x01i\x84\x01+\x92"s);
}

TEST(TypedStreamWriter, ACStringIsAnObjectOfItsOwn)
{
    TypedStreamWriter stream;
    stream.type("*");
    stream.cString("i");
    stream.type("*");
    stream.cString("i");
    EXPECT_EQ(contentOf(stream), "\x84\x01*\x84\x84\x01i\x92\x92"s);
}

TEST(TypedStreamWriter, ArraysOfEqualLengthShareTheirType)
{
    const std::array bytes{std::byte{1}, std::byte{2}};
    TypedStreamWriter stream;
    stream.characterArray(bytes);
    stream.characterArray(bytes);
    EXPECT_EQ(contentOf(stream), "\x84\x04[2c]\x01\x02\x92\x01\x02"s);
}

} // namespace
} // namespace vorn
