#pragma once

#include "VornSandbox/Service/Call.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace httplib { // the server library stays out of our headers
class ContentReader;
struct Request;
struct Response;
} // namespace httplib

namespace vorn::sandbox {

/// One line for each request, such as "POST /api/v1/auth/device-links 201 93>240 bytes 2 ms": bytes received and sent.
/// Queries, header values and bodies never reach it, since they hold secrets. Threads: any.
class RequestLog {
public:
    using Write = std::function<void(const std::string& line)>; ///< called with a line without its newline

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

/// An HTTP server on 127.0.0.1.
class HTTPFront {
public:
    /// Answers a request; called on several threads at once. What it throws becomes an error answer.
    using Serve = std::function<Answer(Call&)>;

    struct Patience {
        std::chrono::milliseconds within{30'000}; ///< how long a client may pause within a request
        std::chrono::seconds between{8};          ///< how long a connection may idle before a request
    };

    /// Listens on `port`, or for 0 on any free port, and answers from now on. Throws `std::runtime_error` if the port
    /// is taken.
    HTTPFront(int port, Serve serve, RequestLog& log, const Patience& patience);
    HTTPFront(int port, Serve serve, RequestLog& log) : HTTPFront(port, std::move(serve), log, Patience{}) {}

    /// Cuts every connection and waits for the answers in progress.
    ~HTTPFront();
    HTTPFront(HTTPFront&&) = delete;

    int port() const { return port_; }
    std::string baseURL() const { return serviceURL(port_); } ///< such as "http://127.0.0.1:8787"

private:
    class Listener;

    void configure(const Patience& patience);
    void handle(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader* reader);
    Call callOf(const httplib::Request& request) const;
    Answer answerTo(Call& call);
    void hang(int remotePort) const;
    void cut(int remotePort) const;
    void fill(httplib::Response& response, Answer&& answer);
    void refuse(const httplib::Request& request, httplib::Response& response);

    Serve serve_;
    RequestLog& log_;
    std::unique_ptr<Listener> http_;
    int port_ = -1;
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};

} // namespace vorn::sandbox
