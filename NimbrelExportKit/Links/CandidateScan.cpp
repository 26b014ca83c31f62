#include "NimbrelExportKit/Links/CandidateScan.h"

#include "NimbrelExportKit/Links/Scalars.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace vorn::links {
namespace {

/// Sixteen bytes compared at once; clang and GCC turn these into vector instructions.
using Block = std::uint8_t __attribute__((vector_size(16)));
using Halves = std::array<std::uint64_t, 2>;

constexpr auto npos = std::string_view::npos;
constexpr std::size_t blockSize = sizeof(Block);
constexpr std::size_t halfSize = blockSize / 2;

Block load(const char* from) noexcept
{
    Block block;
    std::memcpy(&block, from, sizeof block);
    return block;
}

/// Nonzero bytes where `mayHoldLink` must look: at a '.', ':' or '@' before anything but a space or control character,
/// and at the lead bytes of a full-width stop.
Halves possibleMarks(const char* at) noexcept
{
    const Block here = load(at);
    const Block next = load(at + 1);
    const auto isMark = (here == '.') | (here == ':') | (here == '@');
    const auto found = (isMark & (next > ' ')) | ((here == 0xE3) & (next == 0x80)) |
                       ((here == 0xEF) & ((next == 0xBC) | (next == 0xBD)));
    return std::bit_cast<Halves>(found);
}

/// As above for `nextCandidate`: where a '.' precedes '0' or anything above it, a ':' precedes a '/', or the last
/// letter of `localHost` precedes a ':'. Nearly exact, without a branch for each full stop or time of day.
Halves possibleCandidates(const char* at) noexcept
{
    const Block here = load(at);
    const Block next = load(at + 1);
    const auto found = ((here == '.') & (next >= '0')) | ((here == ':') & (next == '/')) |
                       (((here | 0x20) == localHost.back()) & (next == ':'));
    return std::bit_cast<Halves>(found);
}

std::size_t firstByte(std::uint64_t half) noexcept
{
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(half) : std::countl_zero(half);
    return static_cast<std::size_t>(bits) / 8;
}

std::uint64_t withoutByte(std::uint64_t half, std::size_t byte) noexcept
{
    const std::size_t place = std::endian::native == std::endian::little ? byte : halfSize - 1 - byte;
    return half & ~(std::uint64_t{0xFF} << (place % halfSize * 8));
}

bool canStandBesideDot(char c) noexcept
{
    return !isASCII(c) || isAlphanumeric(c);
}

bool endsWithLocalHost(std::string_view text) noexcept
{
    return text.size() >= localHost.size() &&
           std::ranges::equal(text.substr(text.size() - localHost.size()), localHost, {},
                              [](char c) { return static_cast<char>(c | 0x20); });
}

/// The position of the candidate that the byte at `at` indicates; npos if it indicates none.
std::size_t candidateAt(std::string_view text, std::size_t at) noexcept
{
    if (at == 0 || at + 1 >= text.size()) return npos;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    switch (text[at]) {
    case '.': return canStandBesideDot(text[at + 1]) && canStandBesideDot(text[at - 1]) ? at : npos;
    case ':': return text.substr(at).starts_with("://") && isAlphanumeric(byte(at - 1)) ? at : npos;
    case 't':
    case 'T': {
        const bool portFollows = at + 2 < text.size() && text[at + 1] == ':' && isDigit(byte(at + 2));
        return portFollows && endsWithLocalHost(text.substr(0, at + 1)) ? at + 1 : npos;
    }
    default: return npos;
    }
}

/// Whether `c` is an ASCII space or one of the control characters below it.
bool isSpace(char c) noexcept
{
    return static_cast<unsigned char>(c) <= ' ';
}

bool isSchemeCharacter(char c) noexcept
{
    return isAlphanumeric(c) || isOneOf(c, "+-.");
}

/// Whether one of the full stops that some keyboards type between the labels of a name begins at `at`.
bool isFullWidthStop(std::string_view text, std::size_t at) noexcept
{
    const std::string_view stop = text.substr(at, 3);
    return stop == "。" || stop == "．" || stop == "｡";
}

/// Returns `at` if the byte there may belong to a link; otherwise npos.
std::size_t markAt(std::string_view text, std::size_t at) noexcept
{
    if (at == 0 || at + 1 >= text.size() || isSpace(text[at - 1])) return npos;
    const char before = text[at - 1];
    const char after = text[at + 1];
    const auto digit = [](char c) { return isDigit(c); };
    switch (text[at]) {
    case '.': return isWordCharacter(after) || isOneOf(after, "-_") ? at : npos;
    case ':': return isSchemeCharacter(before) && !isSpace(after) && !(digit(before) && digit(after)) ? at : npos;
    case '@': return isSpace(after) ? npos : at;
    default: break;
    }
    if (!isFullWidthStop(text, at) || at + 3 >= text.size()) return npos;
    // Without an ASCII letter or digit beside it, it ends a sentence: such scripts need no space there.
    const auto ascii = [](char c) { return isAlphanumeric(c); };
    return ascii(before) || ascii(text[at + 3]) ? at : npos;
}

/// Returns the first result of `accept(text, place)` other than npos, for places from `from` on; npos if there is none.
/// Tries only places that `possible` marks, sixteen at a time; in a text too short for that, every place.
template <Halves (*possible)(const char*) noexcept, std::size_t (*accept)(std::string_view, std::size_t) noexcept>
std::size_t firstPlace(std::string_view text, std::size_t from) noexcept
{
    std::size_t at = from;
    while (text.size() > blockSize && at + 1 < text.size()) {
        // The last block overlaps the one before it: bytes before `at` have been looked at.
        const std::size_t start = std::min(at, text.size() - blockSize - 1);
        const Halves halves = possible(text.data() + start);
        for (std::size_t half = 0; (halves[0] | halves[1]) != 0 && half < halves.size(); ++half) {
            for (std::uint64_t found = halves[half]; found != 0;) {
                const std::size_t byte = firstByte(found);
                const std::size_t position = start + half * halfSize + byte;
                const std::size_t candidate = position < at ? npos : accept(text, position);
                if (candidate != npos) return candidate;
                found = withoutByte(found, byte);
            }
        }
        at = start + blockSize;
    }
    for (; at < text.size(); ++at) {
        if (const std::size_t candidate = accept(text, at); candidate != npos) return candidate;
    }
    return npos;
}

} // namespace

std::size_t nextCandidate(std::string_view text, std::size_t from) noexcept
{
    return firstPlace<possibleCandidates, candidateAt>(text, from);
}

bool mayHoldLink(std::string_view text) noexcept
{
    return firstPlace<possibleMarks, markAt>(text, 0) != npos;
}

} // namespace vorn::links
