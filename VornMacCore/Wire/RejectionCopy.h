#pragma once

#include <optional>
#include <string>

namespace vorn::RejectionCopy {

/// Returns the text for an upload that was rejected for the reason `key`; the general sentence for an absent or unknown
/// key. Threads: any.
std::string text(const std::optional<std::string>& key);

} // namespace vorn::RejectionCopy
