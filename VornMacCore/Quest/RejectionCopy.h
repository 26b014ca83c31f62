#pragma once

#include <optional>
#include <string>

namespace vorn::RejectionCopy {

/// What the user is told when an upload was rejected for the reason `key`; the general sentence for a key that is
/// absent or unknown. Threads: any.
std::string text(const std::optional<std::string>& key);

} // namespace vorn::RejectionCopy
