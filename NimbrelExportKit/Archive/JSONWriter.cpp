#include "NimbrelExportKit/Archive/JSONWriter.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vorn::json {
namespace {

using Word = std::uint64_t;

constexpr Word everyByte(unsigned char byte)
{
    return Word{0x0101010101010101} * byte;
}

/// Eight bytes as a little-endian word, on every machine.
Word load(const char* from)
{
    Word word = 0;
    std::memcpy(&word, from, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    return word;
}

/// Sets the high bit of each byte below `limit` (at most 0x80). Only a zero result and the lowest set bit are reliable:
/// a borrow may set bits above it.
constexpr Word bytesBelow(Word word, unsigned char limit)
{
    return (word - everyByte(limit)) & ~word & everyByte(0x80);
}

constexpr Word bytesEqual(Word word, unsigned char byte)
{
    return bytesBelow(word ^ everyByte(byte), 1);
}

constexpr Word bytesToEscape(Word word)
{
    return bytesBelow(word, 0x20) | bytesEqual(word, '"') | bytesEqual(word, '\\');
}

constexpr bool mustEscape(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

constexpr std::size_t blockSize = 32;

/// Whether a whole block needs no escape. Branch-free, so that it is vectorised.
bool isPlainBlock(const char* from)
{
    Word found = 0;
    for (std::size_t i = 0; i < blockSize; i += sizeof(Word)) found |= bytesToEscape(load(from + i));
    return found == 0;
}

constexpr std::string_view hexDigits = "0123456789abcdef";

/// "\u0000" to "\u001f", concatenated.
constexpr auto controlEscapes = [] {
    std::array<char, std::size_t{6} * 0x20> all{};
    for (std::size_t i = 0; i < 0x20; ++i) {
        const std::array<char, 6> one{'\\', 'u', '0', '0', hexDigits[i / 16], hexDigits[i % 16]};
        for (std::size_t k = 0; k < one.size(); ++k) all[i * one.size() + k] = one[k];
    }
    return all;
}();

} // namespace

std::size_t plainPrefix(std::string_view text) noexcept
{
    std::size_t i = 0;
    if (text.size() < sizeof(Word)) {
        while (i < text.size() && !mustEscape(text[i])) ++i;
        return i;
    }
    while (i + blockSize <= text.size() && isPlainBlock(text.data() + i)) i += blockSize;
    while (i < text.size()) {
        i = std::min(i, text.size() - sizeof(Word)); // the last word overlaps the one before, where nothing was found
        const Word found = bytesToEscape(load(text.data() + i));
        if (found != 0) return i + static_cast<std::size_t>(std::countr_zero(found)) / 8;
        i += sizeof(Word);
    }
    return i;
}

std::string_view escape(char byte) noexcept
{
    switch (byte) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '\b': return "\\b";
    case '\f': return "\\f";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: return {controlEscapes.data() + std::size_t{6} * static_cast<unsigned char>(byte), 6};
    }
}

} // namespace vorn::json
