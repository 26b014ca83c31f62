#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

/// The unit in which people read a size: decimal ones, as macOS shows them. Threads: any.
struct ByteUnit {
    std::string_view name; ///< "bytes", "kB" or "MB"
    double bytes = 1;

    /// The largest unit of which `size` holds at least one.
    static ByteUnit fitting(std::int64_t size);

    /// `size` in this unit, without its name: whole bytes, else one digit after the point.
    std::string number(std::int64_t size) const;
};

/// "999 bytes", "546.2 kB", "9.0 MB".
std::string bytesText(std::int64_t size);

/// "3.4 of 8.1 MB": both in the unit of the whole, to be compared at a glance.
std::string partText(std::int64_t part, std::int64_t whole);

} // namespace vorn
