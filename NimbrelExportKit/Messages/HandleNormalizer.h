#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

/// One spelling for each phone number, e-mail address or business identifier, so that they can be compared.
/// Threads: any.
namespace vorn::HandleNormalizer {

/// Trims and lower-cases. Reduces phone numbers (digits and common separators) to digits and a leading "+". A leading
/// 00 and national prefixes stay: +1555… and 1555… are different handles.
std::string normalize(std::string_view handle);

/// The normalised handles without empty ones.
std::set<std::string> normalizedSet(const std::vector<std::string>& handles);

} // namespace vorn::HandleNormalizer
