#pragma once

#include <string_view>

namespace vorn {

/// Ends the process at once, in every build, with one line on standard error. For mistakes of the program itself,
/// where going on would mean wrong data.
[[noreturn]] void fatalError(std::string_view reason) noexcept;

} // namespace vorn
