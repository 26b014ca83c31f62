#pragma once

#include <optional>
#include <string>

namespace vorn::RejectionCopy {

/// Returns what the user is told when an upload was rejected for the reason `key`; the general sentence for an absent
/// or unknown key. Threads: any.
std::string text(const std::optional<std::string>& key);

} // namespace vorn::RejectionCopy
