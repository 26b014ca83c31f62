#pragma once

#include <string_view>

#include <nlohmann/json.hpp>

namespace vorn {

/// Reads `text` as `JSONObject::parse` documents, but accepts any kind of value. Throws `UndecodableJSON`.
nlohmann::json parseJSONTree(std::string_view text);

} // namespace vorn
