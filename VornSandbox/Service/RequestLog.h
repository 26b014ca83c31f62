#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace vorn::sandbox {

/// One line for each request, such as "POST /api/v1/auth/device-links 201 93>240 bytes 2 ms": bytes received and sent.
/// Queries, headers and bodies never reach it, for they hold secrets. Threads: any.
class RequestLog {
public:
    using Write = std::function<void(const std::string& line)>; ///< the line comes without its end

    explicit RequestLog(Write write) : write_(std::move(write)) {}

    struct Entry {
        std::string method;
        std::string path;
        std::string outcome; ///< the status, or what happened instead
        std::int64_t received = 0;
        std::int64_t sent = 0;
        std::chrono::milliseconds took{};
    };
    void request(const Entry& entry);
    void warning(std::string_view text);

private:
    void line(const std::string& text);

    std::mutex mutex_; ///< keeps lines whole
    Write write_;
};

} // namespace vorn::sandbox
