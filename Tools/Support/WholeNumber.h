#pragma once

#include <cstdint>
#include <string>

namespace vorn {

/// What is wrong with `text` as a whole number from `least` to `most`, both included, as the end of a sentence about an
/// option; empty when it is one. Decimal digits alone: other readers take a leading zero for a number to the base 8.
std::string mistakeInWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most);

} // namespace vorn
