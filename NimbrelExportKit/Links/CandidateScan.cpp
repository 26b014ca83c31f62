#include "NimbrelExportKit/Links/CandidateScan.h"

#include "NimbrelExportKit/Links/Scalars.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace vorn::links {
namespace {

using Word = std::uint64_t;

constexpr Word ones = 0x0101010101010101U;
constexpr Word lowBits = 0x7F * ones;

/// The top bit of each byte of `word` that equals `c`; exact, unlike the shorter trick with a subtraction.
constexpr Word bytesEqual(Word word, char c) noexcept
{
    const Word difference = word ^ (static_cast<unsigned char>(c) * ones);
    return ~(((difference & lowBits) + lowBits) | difference | lowBits);
}

constexpr Word marks(Word word) noexcept
{
    return bytesEqual(word, '.') | bytesEqual(word, ':');
}

std::size_t firstByte(Word marked) noexcept
{
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(marked) : std::countl_zero(marked);
    return static_cast<std::size_t>(bits) / 8;
}

Word withoutByte(Word marked, std::size_t byte) noexcept
{
    const std::size_t place = std::endian::native == std::endian::little ? byte : sizeof(Word) - 1 - byte;
    return marked & ~(Word{0x80} << (place * 8));
}

bool canStandBesideDot(char c) noexcept
{
    return !isASCII(c) || isAlphanumeric(static_cast<unsigned char>(c));
}

bool isCandidate(std::string_view text, std::size_t at) noexcept
{
    if (at == 0 || at + 1 >= text.size()) return false;
    if (text[at] == '.') return canStandBesideDot(text[at + 1]) && canStandBesideDot(text[at - 1]);
    return text.substr(at).starts_with("://") && isAlphanumeric(static_cast<unsigned char>(text[at - 1]));
}

} // namespace

std::size_t nextCandidate(std::string_view text, std::size_t from) noexcept
{
    std::size_t at = from;
    for (; at + sizeof(Word) <= text.size(); at += sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        for (Word marked = marks(word); marked != 0;) {
            const std::size_t byte = firstByte(marked);
            if (isCandidate(text, at + byte)) return at + byte;
            marked = withoutByte(marked, byte);
        }
    }
    for (; at < text.size(); ++at) {
        if ((text[at] == '.' || text[at] == ':') && isCandidate(text, at)) return at;
    }
    return std::string_view::npos;
}

} // namespace vorn::links
