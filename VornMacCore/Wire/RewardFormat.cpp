#include "VornMacCore/Wire/RewardFormat.h"

#include <cmath>
#include <locale>
#include <sstream>
#include <string_view>

#include <fmt/format.h>

namespace vorn::RewardFormat {
namespace {

std::size_t skipDigits(std::string_view& text)
{
    std::size_t count = 0;
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; ++count) text.remove_prefix(1);
    return count;
}

bool skipOneOf(std::string_view& text, std::string_view accepted)
{
    if (text.empty() || accepted.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

bool isDecimalNumber(std::string_view text)
{
    skipOneOf(text, "+-");
    std::size_t digits = skipDigits(text);
    if (skipOneOf(text, ".")) digits += skipDigits(text);
    if (digits == 0) return false;
    if (skipOneOf(text, "eE")) {
        skipOneOf(text, "+-");
        if (skipDigits(text) == 0) return false;
    }
    return text.empty();
}

/// Uses a stream in the C locale: `strtod` follows the process's locale, which a GUI toolkit sets to the user's.
std::optional<double> parse(const std::string& text)
{
    if (!isDecimalNumber(text)) return std::nullopt;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    // Some libraries report underflow as a failure: accept its value, which is near zero.
    if (stream.fail() && std::abs(value) > 1) return std::nullopt;
    return value;
}

} // namespace

std::string usd(double amount)
{
    return fmt::format("${:.2f}", amount); // never follows the locale
}

std::optional<std::string> usd(const std::optional<double>& amount)
{
    if (!amount) return std::nullopt;
    return usd(*amount);
}

std::optional<std::string> usd(const std::optional<std::string>& amount)
{
    return amount ? usd(parse(*amount)) : std::nullopt;
}

std::optional<double> dollars(const std::string& text)
{
    return text.starts_with('$') ? parse(text.substr(1)) : std::nullopt;
}

} // namespace vorn::RewardFormat
