#pragma once

#include "VornSandbox/Service/Call.h"
#include "VornSandbox/Service/RequestLog.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace vorn::sandbox {

/// An HTTP server on 127.0.0.1. The only place that names the server library.
class HTTPFront {
public:
    /// Answers a request; called on several threads at once. What it throws becomes an error answer.
    using Serve = std::function<Answer(const Call&)>;

    struct Limits {
        std::chrono::milliseconds requestHead{10'000}; ///< a connection brings a request by then, or is cut
        std::size_t threads = 128; ///< one a connection; beyond, the connection that waits longest makes room
    };

    /// Listens on `port`, or on any free one for 0; `std::runtime_error` when it is taken. Answers from now on.
    HTTPFront(int port, Serve serve, RequestLog& log, const Limits& limits);
    HTTPFront(int port, Serve serve, RequestLog& log) : HTTPFront(port, std::move(serve), log, Limits{}) {}

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
