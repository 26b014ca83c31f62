#pragma once

#include "VornSandbox/Service/Backend.h"

#include <nlohmann/json.hpp>

namespace vorn::sandbox {

/// Everything the page shows, but the messages. Times are milliseconds since 1970. No secret is in it.
/// Threads: hold the state's lock.
nlohmann::json phoneView(const Backend& backend);

} // namespace vorn::sandbox
