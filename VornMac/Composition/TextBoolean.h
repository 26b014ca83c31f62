#pragma once

#include <string_view>

namespace vorn {

/// Whether macOS would read `text` as true in user defaults: by its first character that is not white space, a sign, a
/// zero or a point. "YES", "true", "y" and "1" are true; "NO", "false", "0" and "" are not.
bool countsAsTrue(std::string_view text);

} // namespace vorn
