#include "Platform/Base/PrintableText.h"

#include "Platform/Base/Text.h"

#include <cstddef>

namespace vorn {
namespace {

constexpr std::size_t longest = 300; // characters

bool isControl(char32_t scalar)
{
    const bool c0OrC1 = scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
    const bool breaksLine = scalar == 0x2028 || scalar == 0x2029;
    return c0OrC1 || breaksLine;
}

/// Zero-width characters, annotation marks, and tag characters, which can spell hidden text.
bool isInvisible(char32_t scalar)
{
    const bool hasNoWidth = scalar == 0x00AD || scalar == 0x180E || scalar == 0x200B || scalar == 0xFEFF ||
                            (scalar >= 0x2060 && scalar <= 0x2064);
    const bool annotates = scalar >= 0xFFF9 && scalar <= 0xFFFB;
    const bool isTag = scalar >= 0xE0000 && scalar <= 0xE007F;
    return hasNoWidth || annotates || isTag;
}

bool reordersText(char32_t scalar)
{
    return scalar == 0x061C || scalar == 0x200E || scalar == 0x200F || (scalar >= 0x202A && scalar <= 0x202E) ||
           (scalar >= 0x2066 && scalar <= 0x206F); // and the deprecated shaping marks after them
}

} // namespace

std::string printableWhole(std::string_view foreign)
{
    std::string clean;
    for (const char32_t scalar : text::scalars(foreign)) {
        if (isInvisible(scalar)) continue;
        text::append(clean, isControl(scalar) || reordersText(scalar) ? U'\uFFFD' : scalar);
    }
    return clean;
}

std::string printable(std::string_view foreign)
{
    const std::string clean = printableWhole(foreign);
    const std::string cut = text::prefixOfCharacters(clean, longest);
    return cut.size() < clean.size() ? cut + "…" : clean;
}

} // namespace vorn
