#pragma once

#include <exception>
#include <string>
#include <utility>

namespace vorn::sandbox {

/// A request that is refused: the HTTP status, and the answer's "code" (for programs) and "message" (for people).
class ServiceError : public std::exception {
public:
    ServiceError(int status, std::string code, std::string message)
        : status_(status), code_(std::move(code)), message_(std::move(message))
    {
    }

    int status() const noexcept { return status_; }
    const std::string& code() const noexcept { return code_; }
    const char* what() const noexcept override { return message_.c_str(); }

private:
    int status_;
    std::string code_;
    std::string message_;
};

} // namespace vorn::sandbox
