#pragma once

#include <optional>
#include <string>

namespace vorn {

/// What the running program's property list says under `key`, where the system has such a thing.
std::optional<std::string> mainBundleText(const std::string& key);

} // namespace vorn
