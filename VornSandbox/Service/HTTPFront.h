#pragma once

#include "VornSandbox/Service/Call.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
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

/// An HTTP server on 127.0.0.1. The only place that names the server library.
class HTTPFront {
public:
    /// Answers a request; called on several threads at once. What it throws becomes an error answer.
    using Serve = std::function<Answer(Call&)>;

    struct Patience {
        std::chrono::milliseconds within{30'000}; ///< a client may pause so long within a request
        std::chrono::seconds between{8};          ///< and a connection may idle so long before one
    };

    /// Listens on `port`, or on any free one for 0; `std::runtime_error` when it is taken. Answers from now on.
    HTTPFront(int port, Serve serve, RequestLog& log, const Patience& patience);
    HTTPFront(int port, Serve serve, RequestLog& log) : HTTPFront(port, std::move(serve), log, Patience{}) {}

    /// Cuts every connection and waits for the answers under way.
    ~HTTPFront();
    HTTPFront(HTTPFront&&) = delete;

    int port() const;
    std::string baseURL() const; ///< such as "http://127.0.0.1:8787"

private:
    class Server;
    std::unique_ptr<Server> server_;
};

} // namespace vorn::sandbox
