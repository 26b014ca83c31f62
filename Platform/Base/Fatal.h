#pragma once

#include <string_view>

namespace vorn {

/// Ends the process at once, in every build, with one line on standard error. For errors in the program itself, where
/// continuing would produce wrong data.
[[noreturn]] void fatalError(std::string_view reason) noexcept;

} // namespace vorn
