#include "NimbrelExportKit/Links/Scalars.h"

#include <algorithm>
#include <array>

namespace vorn::links {
namespace {

constexpr bool isContinuation(char c) noexcept
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

struct Range {
    char32_t first;
    Script script; ///< of the scalars up to the next range
};

/// Coarse blocks, fine enough to tell an address from the text around it.
constexpr auto ranges = std::to_array<Range>({
    {0x0000, Script::latin},       {0x0080, Script::none}, // controls, no-break space
    {0x00A1, Script::symbol},      {0x00AA, Script::latin},
    {0x00AB, Script::none}, // «
    {0x00AC, Script::symbol},      {0x00B5, Script::latin},
    {0x00B6, Script::symbol},      {0x00BA, Script::latin},
    {0x00BB, Script::none},                                 // »
    {0x00BC, Script::symbol},      {0x00C0, Script::latin}, // letters, modifier letters and combining marks
    {0x0370, Script::spaced},      {0x037E, Script::none},  // Greek question mark
    {0x037F, Script::spaced},      {0x0387, Script::none},
    {0x0388, Script::spaced}, // Greek, Cyrillic, Armenian
    {0x0589, Script::none},        {0x058A, Script::spaced},
    {0x0590, Script::rightToLeft}, {0x05BE, Script::none}, // maqaf
    {0x05BF, Script::rightToLeft}, {0x05C0, Script::none},
    {0x05C1, Script::rightToLeft}, {0x05C3, Script::none},
    {0x05C4, Script::rightToLeft}, {0x05F3, Script::none}, // geresh
    {0x05F5, Script::rightToLeft}, {0x0600, Script::none}, // signs and punctuation
    {0x0610, Script::rightToLeft}, {0x061B, Script::none}, // semicolon, letter mark, question mark
    {0x0620, Script::rightToLeft}, {0x066A, Script::none},
    {0x066E, Script::rightToLeft}, {0x06D4, Script::none}, // full stop
    {0x06D5, Script::rightToLeft}, {0x0900, Script::spaced},
    {0x0964, Script::none},                                    // dandas
    {0x0966, Script::spaced},                                  // scripts of India
    {0x0E00, Script::unspaced},                                // Thai, Lao
    {0x0F00, Script::spaced},      {0x1000, Script::unspaced}, // Burmese
    {0x10A0, Script::spaced},      {0x1100, Script::unspaced}, // Hangul
    {0x1200, Script::spaced},      {0x1680, Script::none},     // ogham space
    {0x1681, Script::spaced},      {0x1780, Script::unspaced}, // Khmer
    {0x1800, Script::spaced},      {0x1E00, Script::latin},
    {0x1F00, Script::spaced},      {0x2000, Script::none}, // spaces
    {0x200C, Script::joiner},      {0x200E, Script::none}, // direction marks
    {0x2010, Script::dash},                                // hyphens, en dash
    {0x2014, Script::none},                                // em dash: separates sentences, not words
    {0x2019, Script::dash},                                // apostrophe
    {0x201A, Script::none},                                // quotation marks, bullets, ellipsis, direction marks
    {0x2070, Script::symbol},      {0x3000, Script::none}, // ideographic space and punctuation
    {0x3005, Script::unspaced},                            // iteration marks
    {0x3008, Script::none},        {0x3012, Script::symbol},
    {0x3014, Script::none},        {0x3021, Script::unspaced},
    {0x3030, Script::none},        {0x3031, Script::unspaced},
    {0x303D, Script::none},        {0x3041, Script::unspaced},
    {0x30A0, Script::none},        {0x30A1, Script::unspaced},
    {0x30FB, Script::none}, // middle dot
    {0x30FC, Script::unspaced},    {0xA4D0, Script::spaced},
    {0xA720, Script::latin},       {0xA800, Script::spaced},
    {0xA960, Script::unspaced},    {0xA980, Script::spaced},
    {0xAB30, Script::latin},       {0xAB70, Script::spaced},
    {0xAC00, Script::unspaced}, // Hangul syllables
    {0xD800, Script::none},        {0xF900, Script::unspaced},
    {0xFB00, Script::latin},       {0xFB1D, Script::rightToLeft},
    {0xFD3E, Script::none},        {0xFD40, Script::rightToLeft},
    {0xFE00, Script::joiner},                              // variation selectors
    {0xFE10, Script::none},                                // vertical forms, small forms
    {0xFE70, Script::rightToLeft}, {0xFEFF, Script::none}, // byte order mark
    {0xFF06, Script::symbol},      {0xFF07, Script::none}, // full-width ampersand: joins words
    {0xFF10, Script::unspaced},                            // full-width digits
    {0xFF1A, Script::none},        {0xFF21, Script::unspaced},
    {0xFF3B, Script::none},        {0xFF41, Script::unspaced},
    {0xFF5B, Script::none},                                // full-width brackets and bars, half-width stops
    {0xFF66, Script::unspaced},    {0xFFE0, Script::none}, // full-width signs, specials, object replacement
    {0x10000, Script::spaced},     {0x10800, Script::rightToLeft},
    {0x11000, Script::spaced},     {0x16FE0, Script::unspaced},
    {0x1B170, Script::spaced},     {0x1D000, Script::symbol}, // music, mathematical letters
    {0x1DF00, Script::spaced},     {0x1E800, Script::rightToLeft},
    {0x1F000, Script::symbol},                                // emoji
    {0x20000, Script::unspaced},   {0xE0000, Script::joiner}, // tags: the flags of regions
    {0xE01F0, Script::none},
});
static_assert(std::ranges::is_sorted(ranges, std::ranges::less{}, &Range::first));

} // namespace

Scalar scalarAt(std::string_view text, std::size_t at) noexcept
{
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (size == 0 || text.size() - at < size) return {U'\uFFFD', 1};
    char32_t value = lead & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (!isContinuation(text[at + i])) return {U'\uFFFD', 1};
        value = value << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    return {value, size};
}

Scalar scalarBefore(std::string_view text, std::size_t end) noexcept
{
    std::size_t start = end - 1;
    while (start > 0 && end - start < 4 && isContinuation(text[start])) --start;
    const Scalar scalar = scalarAt(text, start);
    return start + scalar.size == end ? scalar : Scalar{U'\uFFFD', 1};
}

Script scriptOf(char32_t scalar) noexcept
{
    return std::prev(std::ranges::upper_bound(ranges, scalar, {}, &Range::first))->script;
}

} // namespace vorn::links
