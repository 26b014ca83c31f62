#pragma once

#include <string_view>

#include <nlohmann/json.hpp>

namespace vorn {

/// Reads `text` as `JSONObject::parse` promises, whatever value it is. Throws `UndecodableJSON`.
nlohmann::json parseJSONTree(std::string_view text);

} // namespace vorn
