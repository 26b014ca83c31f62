#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

/// A unit of sizes: decimal, as on macOS. Threads: any.
struct ByteUnit {
    std::string_view name; ///< "bytes", "kB" or "MB"
    double bytes = 1;

    /// The largest unit of which `size`, rounded as it is shown, has at least one.
    static ByteUnit fitting(std::int64_t size);

    /// `size` in this unit, without its name: whole bytes, other units with one decimal place.
    std::string number(std::int64_t size) const;
};

/// "999 bytes", "546.2 kB", "9.0 MB".
std::string bytesText(std::int64_t size);

/// "3.4 of 8.1 MB": both in the unit of the whole, so that they compare at a glance.
std::string partText(std::int64_t part, std::int64_t whole);

} // namespace vorn
