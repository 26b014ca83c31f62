#include "NimbrelExportKit/Messages/HandleNormalizer.h"

#include "Platform/Base/Text.h"

#include <algorithm>

namespace vorn::HandleNormalizer {
namespace {

bool isPhoneSign(char32_t scalar)
{
    return std::u32string_view(U" +-().").find(scalar) != std::u32string_view::npos;
}

bool isPhoneNumber(std::string_view text)
{
    const std::u32string scalars = text::scalars(text);
    return std::all_of(scalars.begin(), scalars.end(),
                       [](char32_t scalar) { return text::isDecimalDigit(scalar) || isPhoneSign(scalar); });
}

/// "0" to "9" only: digits of other scripts are recognised in phone numbers, but dropped.
std::string asciiDigits(std::string_view text)
{
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

} // namespace

std::string normalize(std::string_view handle)
{
    std::string plain = text::lowercased(text::trimmed(handle));
    if (plain.find('@') != std::string::npos) return plain;
    if (plain.starts_with("urn:biz:") || plain.starts_with("biz:")) return plain;
    const std::string digits = asciiDigits(plain);
    if (digits.empty() || !isPhoneNumber(plain)) return plain;
    return plain.starts_with('+') ? "+" + digits : digits;
}

std::set<std::string> normalizedSet(const std::vector<std::string>& handles)
{
    std::set<std::string> result;
    for (const std::string& handle : handles) result.insert(normalize(handle));
    result.erase(std::string());
    return result;
}

} // namespace vorn::HandleNormalizer
