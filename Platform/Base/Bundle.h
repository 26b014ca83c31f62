#pragma once

#include <map>
#include <optional>
#include <string>

namespace vorn {

/// The property list of an application bundle, read by key.
class Bundle {
public:
    using Values = std::map<std::string, std::string, std::less<>>;

    /// A bundle with just these values.
    explicit Bundle(Values values) : values_(std::move(values)) {}

    /// The running program's own bundle. `embedded` supplies keys that it lacks: command-line tools, and systems other
    /// than macOS, have no property list.
    static Bundle main(Values embedded);

    /// The value of `key`; nothing when it is missing or is not text.
    std::optional<std::string> text(const std::string& key) const;

    /// The version as users see it, "CFBundleShortVersionString"; "1.0.0" without one.
    std::string version() const;

private:
    Values values_;
    bool asksSystem_ = false;
};

} // namespace vorn
