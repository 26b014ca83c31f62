#pragma once

#include <cstdint>

namespace vorn {

/// Divides a file into the parts of an upload. Parts are numbered from 1; sizes are in bytes.
struct PartPlan {
    static constexpr std::int64_t defaultPartSize = 8 * 1024 * 1024;
    static constexpr std::int64_t windowSize = 50; ///< the most part URLs asked for at once

    /// The bytes [begin, end) of the file.
    struct Range {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        std::int64_t length() const noexcept { return end - begin; }
        bool operator==(const Range&) const = default;
    };
    /// `count` parts from `first` on.
    struct Window {
        std::int64_t first = 0;
        std::int64_t count = 0;
        bool operator==(const Window&) const = default;
    };

    /// A negative size counts as 0, a part size below 1 as 1.
    PartPlan(std::int64_t total, std::int64_t part) noexcept;

    std::int64_t totalSize;
    std::int64_t partSize;

    /// At least 1: an empty file is one empty part.
    std::int64_t partCount() const noexcept;
    Range range(std::int64_t part) const noexcept;
    /// The part URLs to ask for if that of `part` is missing.
    Window window(std::int64_t part) const noexcept;

    bool operator==(const PartPlan&) const = default;
};

} // namespace vorn
