#pragma once

#include <optional>
#include <string>

namespace vorn {

/// Received with an answer other than 2xx: the service's own words.
struct ErrorBody {
    std::optional<std::string> text; ///< under the key "message"
    std::optional<std::string> code; ///< under the key "code"
    bool operator==(const ErrorBody&) const = default;
};

/// The result of a call whose successful answer is ignored.
struct IgnoredBody {
    bool operator==(const IgnoredBody&) const = default;
};

} // namespace vorn
