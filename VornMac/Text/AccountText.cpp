#include "VornMac/Text/AccountText.h"

#include <fmt/format.h>

namespace vorn {

std::string signedInText(const std::string& displayName)
{
    return "Signed in as " + displayName;
}

std::string linkedText(const std::string& displayName)
{
    return "Linked to " + displayName + ".";
}

std::string stepText(int number, int count)
{
    return fmt::format("Step {} of {}", number, count);
}

} // namespace vorn
