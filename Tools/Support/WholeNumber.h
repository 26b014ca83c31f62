#pragma once

#include <cstdint>
#include <string>

namespace vorn {

/// Why `text` is not a whole number from `least` to `most`, both included, as the end of a sentence about an option;
/// empty if it is one. Only plain decimal digits are accepted: CLI11 takes a number with a leading zero for octal.
std::string mistakeInWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most);

} // namespace vorn
