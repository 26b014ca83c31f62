#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string_view>

namespace vorn::sandbox {

/// How deep brackets may stand within each other. What the service is sent has no more than four.
constexpr int deepestJSON = 64;

/// JSON from strangers; nothing when `text` is no JSON or nested deeper than `deepest`. The library copies and prints
/// values by recursion: a few hundred thousand brackets, which it reads without complaint, would end the program later.
std::optional<nlohmann::json> parseJSON(std::string_view text, int deepest = deepestJSON);

} // namespace vorn::sandbox
