#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

namespace vorn {

/// Why an upload failed; the service and the transfer report failures as `APIError` and `URLError`.
class UploadError : public std::exception {
public:
    /// The storage did not take a part.
    struct PartRefused {
        std::int64_t part = 0; ///< counts from 1
        int status = 0;        ///< the answer's; 0 if there was no usable URL for the part
        bool operator==(const PartRefused&) const = default;
    };
    /// The storage took a part but did not return the tag that proves it.
    struct MissingETag {
        std::int64_t part = 0; ///< counts from 1
        bool operator==(const MissingETag&) const = default;
    };
    /// The service opened a submission with no place for a file.
    struct NoAsset {
        bool operator==(const NoAsset&) const = default;
    };
    using Reason = std::variant<PartRefused, MissingETag, NoAsset>;

    UploadError(Reason reason); // NOLINT(google-explicit-constructor): a reason converts to its error

    const Reason& reason() const noexcept { return reason_; }
    const char* what() const noexcept override { return description_.c_str(); } ///< for logs

    bool operator==(const UploadError& other) const noexcept { return reason_ == other.reason_; }

private:
    Reason reason_;
    std::string description_;
};

} // namespace vorn
