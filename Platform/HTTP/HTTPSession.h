#pragma once

#include "Platform/Async/Async.h"
#include "Platform/HTTP/HTTPBody.h"
#include "Platform/HTTP/HTTPHeaders.h"
#include "Platform/HTTP/SystemProxy.h"
#include "Platform/HTTP/URL.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// One request. Adds no headers but `Host` and, as `body` describes, `Content-Length`.
struct HTTPRequest {
    enum class Method { get, post, put };

    Method method = Method::get;
    URL url;
    HTTPHeaders headers = {}; ///< an empty name, or any line break or NUL, fails as `URLError::Code::unknown`
    /// Null sends no body. An empty body, and a PUT or POST without a body, send `Content-Length: 0`.
    std::shared_ptr<const HTTPBody> body = {};
    /// How long nothing may move in either direction before the transfer times out (up to 250 ms later). The transfer
    /// as a whole has no limit.
    std::chrono::milliseconds inactivityLimit{30'000};
    /// Called with the number of body bytes sent so far, whenever it has grown, on the session's thread, which also
    /// destroys it once the transfer has begun. Not called once the awaiting coroutine has been resumed. Must not
    /// throw, and must return soon: all of the session's transfers, and cancelling this one, wait for it.
    std::function<void(std::int64_t bytesSent)> onBodyProgress = {};
};

struct HTTPResponse {
    int status = 0;
    HTTPHeaders headers;
    std::string body;

    /// The trimmed value of the first header named `name`, ignoring case.
    std::optional<std::string> header(std::string_view name) const;
};

/// Sends requests. Replaceable in tests. Threads: any; the coroutine resumes on its own queue.
class HTTPSession {
public:
    /// In bytes; a larger answer fails as `dataLengthExceedsMaximum`.
    static constexpr std::size_t largestAnswer = std::size_t{16} * 1024 * 1024;

    virtual ~HTTPSession() = default;

    struct Options {
        /// Certificates (PEM) of the authorities to trust; empty: the system's.
        std::string authorities = {};
        /// The clock for inactivity; null: the steady clock. Called on the session's thread.
        std::function<std::chrono::steady_clock::time_point()> now = {};
        /// The system's proxies; null: only those that the environment names. A search does not count as inactivity.
        std::shared_ptr<SystemProxy> proxies = {};
    };

    /// The real one: keeps connections alive, on one thread of its own. Follows no redirects; no cookies, no cache.
    /// Never repeats a request: one on a dead connection fails. Destroying it joins the thread; pending transfers end
    /// as `Cancelled`. A callback with the last reference may destroy it on that thread, which then ends soon after.
    static std::shared_ptr<HTTPSession> make(Options options);
    static std::shared_ptr<HTTPSession> make() { return make({}); }

    /// Sends `request` and returns the answer, whatever its status; after that the body is no longer read. Throws
    /// `URLError`, what the body throws, or `Cancelled` when the task is cancelled, which closes the connection without
    /// waiting.
    virtual Async<HTTPResponse> send(HTTPRequest request) = 0;
};

} // namespace vorn
