#include "Platform/Base/WipedMemory.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(WipedMemory, OverwritesABlock)
{
    char block[] = "token-canary";
    memory::wipe(block, sizeof block);
    EXPECT_TRUE(std::ranges::all_of(block, [](char byte) { return byte == 0; }));
}

TEST(WipedMemory, MovesWhatFitsIntoTheNewBlock)
{
    auto* block = static_cast<char*>(memory::reallocateWiped(nullptr, 4));
    std::memcpy(block, "abcd", 4);
    block = static_cast<char*>(memory::reallocateWiped(block, 100'000));
    EXPECT_EQ(std::string_view(block, 4), "abcd");
    block = static_cast<char*>(memory::reallocateWiped(block, 2));
    EXPECT_EQ(std::string_view(block, 2), "ab");
    memory::wipeAndFree(block);
    memory::wipeAndFree(nullptr);
}

} // namespace
} // namespace vorn
