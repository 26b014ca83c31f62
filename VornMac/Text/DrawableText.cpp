#include "VornMac/Text/DrawableText.h"

#include "Platform/Base/Text.h"

namespace vorn {

std::string drawable(std::string_view text)
{
    std::string clean;
    const std::u32string scalars = text::scalars(text);
    for (std::size_t at = 0; at < scalars.size(); ++at) {
        const char32_t scalar = scalars[at];
        const bool isControl = scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
        const bool endsLine = scalar == U'\r' && at + 1 < scalars.size() && scalars[at + 1] == U'\n';
        if (endsLine) continue; // CR LF is one line break
        if (scalar == U'\n' || !isControl)
            text::append(clean, scalar);
        else
            text::append(clean, scalar == U'\t' ? U' ' : U'\uFFFD');
    }
    return clean;
}

} // namespace vorn
