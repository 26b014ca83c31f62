#include "Tools/Support/WholeNumber.h"

#include "Platform/Base/PrintableText.h"

#include <charconv>

namespace vorn {

std::string mistakeInWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most)
{
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    const bool isPlain = error == std::errc() && rest == end && (text.size() == 1 || text[0] != '0');
    if (isPlain && value >= least && value <= most) return "";
    return "\"" + printable(text) + "\" is not a whole number from " + std::to_string(least) + " to " +
           std::to_string(most);
}

} // namespace vorn
