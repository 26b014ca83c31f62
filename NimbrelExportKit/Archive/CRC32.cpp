#include "NimbrelExportKit/Archive/CRC32.h"

#include <cstddef>

namespace vorn::CRC32 {
namespace {

constexpr std::size_t sliceCount = 16;

/// `slices[k][b]` is the contribution of byte `b` followed by `k` more bytes, which makes the steps over a block
/// independent of each other. `slices[0]` is the plain table.
using Slices = std::array<std::array<std::uint32_t, 256>, sliceCount>;

std::uint32_t stepOverEightBits(std::uint32_t value)
{
    for (int bit = 0; bit < 8; ++bit) value = (value & 1U) != 0 ? (value >> 1U) ^ 0xEDB88320U : value >> 1U;
    return value;
}

Slices buildSlices()
{
    Slices slices;
    for (std::uint32_t i = 0; i < 256; ++i) slices[0][i] = stepOverEightBits(i);
    for (std::size_t k = 1; k < sliceCount; ++k) {
        for (std::size_t i = 0; i < 256; ++i) {
            const std::uint32_t before = slices[k - 1][i];
            slices[k][i] = slices[0][before & 0xFFU] ^ (before >> 8U);
        }
    }
    return slices;
}

const Slices& slices()
{
    static const Slices built = buildSlices();
    return built;
}

std::uint32_t byteAt(const std::byte* at, std::size_t offset)
{
    return std::to_integer<std::uint32_t>(at[offset]);
}

/// Four bytes as a little-endian word, on every machine; compiles to one load.
std::uint32_t littleEndian(const std::byte* at)
{
    return byteAt(at, 0) | byteAt(at, 1) << 8U | byteAt(at, 2) << 16U | byteAt(at, 3) << 24U;
}

/// The contribution of the four bytes of `word`, which end `after` bytes before the block's end.
std::uint32_t lookUp(const Slices& tables, std::uint32_t word, std::size_t after)
{
    return tables[after + 3][word & 0xFFU] ^ tables[after + 2][(word >> 8U) & 0xFFU] ^
           tables[after + 1][(word >> 16U) & 0xFFU] ^ tables[after][word >> 24U];
}

std::uint32_t stepOverBlock(const Slices& tables, std::uint32_t crc, const std::byte* at)
{
    // Only the first four bytes depend on the block before, so they are looked up last.
    const std::uint32_t independent = lookUp(tables, littleEndian(at + 4), 8) ^
                                      lookUp(tables, littleEndian(at + 8), 4) ^
                                      lookUp(tables, littleEndian(at + 12), 0);
    return lookUp(tables, littleEndian(at) ^ crc, 12) ^ independent;
}

} // namespace

const std::array<std::uint32_t, 256>& table()
{
    return slices()[0];
}

std::uint32_t checksum(ByteView data)
{
    const Slices& tables = slices();
    std::uint32_t crc = 0xFFFFFFFFU;
    const std::byte* at = data.data();
    std::size_t left = data.size();
    for (; left >= sliceCount; at += sliceCount, left -= sliceCount) crc = stepOverBlock(tables, crc, at);
    for (; left > 0; ++at, --left) crc = tables[0][(crc ^ byteAt(at, 0)) & 0xFFU] ^ (crc >> 8U);
    return ~crc;
}

} // namespace vorn::CRC32
