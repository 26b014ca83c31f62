#include "Platform/Base/Bytes.h"

#include <gtest/gtest.h>

namespace vorn {

TEST(ByteBuffer, GrowsWithoutClearingWhatItAdds)
{
    ByteBuffer buffer(64, std::byte{0x5A});
    buffer.resize(0);
    buffer.resize(64); // the same memory, which a clearing buffer would have zeroed
    EXPECT_EQ(buffer[0], std::byte{0x5A});
    EXPECT_EQ(buffer[63], std::byte{0x5A});
}

TEST(Bytes, AreTheTextsOwnBytes)
{
    using namespace std::string_view_literals;
    const std::string_view text = "a\0\xC3\xA9"sv;
    EXPECT_EQ(bytesOf(text).size(), 4U);
    EXPECT_EQ(textOf(bytesOf(text)), text);
}

} // namespace vorn
