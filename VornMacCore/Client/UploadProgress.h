#pragma once

#include <algorithm>
#include <cstdint>

namespace vorn {

/// The progress of an upload, in bytes of the file.
struct UploadProgress {
    std::int64_t bytesSent = 0;
    std::int64_t totalBytes = 0;

    /// From 0 to 1; 0 for an empty file.
    double fraction() const noexcept
    {
        if (totalBytes < 1) return 0;
        return std::min(static_cast<double>(bytesSent) / static_cast<double>(totalBytes), 1.0);
    }

    bool operator==(const UploadProgress&) const = default;
};

} // namespace vorn
