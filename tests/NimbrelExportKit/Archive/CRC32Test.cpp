#include "NimbrelExportKit/Archive/CRC32.h"

#include <gtest/gtest.h>

#include <latch>
#include <random>
#include <thread>

namespace vorn {
namespace {

std::uint32_t byteByByte(ByteView data)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::byte byte : data) {
        crc = CRC32::table()[(crc ^ std::to_integer<std::uint32_t>(byte)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

ByteBuffer randomBytes(std::size_t size)
{
    std::mt19937 random(7);
    ByteBuffer bytes(size);
    for (std::byte& byte : bytes) byte = static_cast<std::byte>(random());
    return bytes;
}

// Tests the first use only where CTest runs each case by itself (VORN_EVERY_TEST): else earlier cases build the table.
TEST(CRC32, BuildsOneTableWhenTwoThreadsAskFirst)
{
    const std::array<std::uint32_t, 256>* tables[2] = {};
    std::uint32_t checksums[2] = {};
    std::latch start(2);
    const auto ask = [&](std::size_t who) {
        start.arrive_and_wait();
        checksums[who] = CRC32::checksum(bytesOf("123456789"));
        tables[who] = &CRC32::table();
    };
    std::thread other(ask, 1);
    ask(0);
    other.join();
    EXPECT_EQ(tables[0], tables[1]);
    EXPECT_EQ(checksums[0], 0xCBF43926U);
    EXPECT_EQ(checksums[1], 0xCBF43926U);
}

TEST(CRC32, GivesTheStandardCheckValue)
{
    EXPECT_EQ(CRC32::checksum(bytesOf("123456789")), 0xCBF43926U);
}

TEST(CRC32, IsZeroForNoBytes)
{
    EXPECT_EQ(CRC32::checksum({}), 0U);
}

TEST(CRC32, AgreesWithPublishedValues)
{
    EXPECT_EQ(CRC32::checksum(bytesOf("a")), 0xE8B7BE43U);
    EXPECT_EQ(CRC32::checksum(bytesOf("The quick brown fox jumps over the lazy dog")), 0x414FA339U);
    EXPECT_EQ(CRC32::checksum(ByteBuffer(32, std::byte{0})), 0x190A55ADU);
    EXPECT_EQ(CRC32::checksum(ByteBuffer(32, std::byte{0xFF})), 0xFF6CAB0BU);
}

TEST(CRC32, TableHoldsEightRoundsOfEachIndex)
{
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int round = 0; round < 8; ++round) value = (value & 1U) != 0 ? value >> 1U ^ 0xEDB88320U : value >> 1U;
        EXPECT_EQ(CRC32::table()[i], value) << i;
    }
    EXPECT_EQ(CRC32::table()[1], 0x77073096U);
    EXPECT_EQ(CRC32::table()[255], 0x2D02EF8DU);
}

TEST(CRC32, AgreesWithItsDefinitionAtEveryStartAndLength)
{
    const ByteBuffer bytes = randomBytes(200);
    for (std::size_t start = 0; start < 17; ++start) {
        for (std::size_t size = 0; size + start <= bytes.size(); ++size) {
            const ByteView part = ByteView(bytes).subspan(start, size);
            ASSERT_EQ(CRC32::checksum(part), byteByByte(part)) << start << "+" << size;
        }
    }
}

TEST(CRC32, AgreesWithItsDefinitionOverManyBlocks)
{
    const ByteBuffer bytes = randomBytes(100'003);
    EXPECT_EQ(CRC32::checksum(bytes), byteByByte(bytes));
}

} // namespace
} // namespace vorn
