#pragma once

#include <string_view>

namespace vorn {

/// A system's version number, such as 14.5.0.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    int patch = 0;
    bool operator==(const SystemVersion&) const = default;
};

/// The running system's version: the product's on macOS, the kernel's elsewhere.
SystemVersion systemVersion();

/// Reads up to three numbers between points; what follows them is left aside, what is missing is 0.
SystemVersion parseSystemVersion(std::string_view text);

} // namespace vorn
