#pragma once

#include <string_view>

namespace vorn {

/// Whether `text` counts as true, as macOS counts texts of user defaults: by the first character that is not a space, a
/// sign or a zero. "YES", "true", "y" and "1" do; "NO", "false", "0" and "" do not.
bool countsAsTrue(std::string_view text);

} // namespace vorn
