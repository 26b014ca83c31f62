#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vorn::testing {

/// A ZIP file of these entries, stored or deflated.
std::string zipOf(const std::vector<std::pair<std::string, std::string>>& entries, bool deflated = true);

nlohmann::json testManifest(std::size_t messageCount);

/// Messages with the guids "G-0", "G-1" …, sent by the user and received in turns.
nlohmann::json testMessages(std::size_t count);

/// A whole export with these messages.
std::string archiveOf(const nlohmann::json& messages);

} // namespace vorn::testing
