#pragma once

#include <stdexcept>
#include <string_view>

namespace vorn {

/// A transfer that ended without an answer. `what()` never contains the URL, which may hold secrets. A cancelled
/// transfer throws `Cancelled` instead.
class URLError : public std::exception {
public:
    enum class Code {
        unknown,
        badURL,
        unsupportedURL,
        cannotFindHost,
        cannotConnectToHost,
        networkConnectionLost,
        notConnectedToInternet,
        timedOut,
        secureConnectionFailed,
        badServerResponse, ///< not HTTP, or malformed
        dataLengthExceedsMaximum,
        requestBodyStreamExhausted,
    };

    explicit URLError(Code code) noexcept : code_(code) {}

    Code code() const noexcept { return code_; }
    const char* what() const noexcept override;

    bool operator==(const URLError& other) const noexcept { return code_ == other.code_; }

private:
    Code code_;
};

} // namespace vorn
