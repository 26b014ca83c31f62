#pragma once

#include <optional>
#include <string>

namespace vorn {

/// The value of `key` in the running program's property list; nothing on systems without bundles.
std::optional<std::string> mainBundleText(const std::string& key);

} // namespace vorn
