#pragma once

#include <nlohmann/json.hpp>

namespace vorn::testing {

/// Every record that is sent or received, by its name: its keys with their types. A type is "string", "integer",
/// "number" or a record's name, followed by "[]" for an array and "?" for an optional.
nlohmann::ordered_json wireRecords();

} // namespace vorn::testing
