#include "VornMac/Composition/TextBoolean.h"

namespace vorn {

bool countsAsTrue(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n+-0.");
    return first != std::string_view::npos &&
           std::string_view("YyTt123456789").find(text[first]) != std::string_view::npos;
}

} // namespace vorn
