#pragma once

#include <stdexcept>
#include <string_view>

namespace vorn {

/// A transfer that brought no answer. `what()` is a sentence of the platform's; it names no URL, which may hold
/// secrets. There is no code for a cancel, as that is no failure of a transfer: whoever cancels sees `Cancelled`, which
/// no handler of errors takes for one.
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
        badServerResponse, ///< what came is not HTTP, or breaks off
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
