#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// Foreign text in a form that a terminal can be given: on one line, without control characters, and so without escape
/// sequences, which could change what the user sees or types, and without marks that reorder the text around them.
/// Each of them becomes one U+FFFD; characters that nobody sees, and that can hide a second text, are left out. Text of
/// more than 300 characters is cut and ends in "…". Threads: any.
std::string printable(std::string_view foreign);

} // namespace vorn
