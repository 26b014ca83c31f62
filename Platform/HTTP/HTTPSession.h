#pragma once

#include "Platform/Async/Async.h"
#include "Platform/HTTP/HTTPBody.h"
#include "Platform/HTTP/HTTPHeaders.h"
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

/// One request. Sent exactly as it stands: no header is added but `Host` and, with a body, `Content-Length`.
struct HTTPRequest {
    enum class Method { get, post, put };

    Method method = Method::get;
    URL url;
    HTTPHeaders headers = {}; ///< a name or value with a line break in it fails as `URLError::Code::unknown`
    /// The body, which the transfer keeps alive; null sends none. An empty body still sends its length. A PUT and a
    /// POST without a body say `Content-Length: 0`.
    std::shared_ptr<const HTTPBody> body = {};
    /// The longest silence in either direction before the transfer ends as timed out, a quarter of a second later at
    /// most; not a limit of the whole.
    std::chrono::milliseconds inactivityLimit{30'000};
    /// Told how many bytes of the body have left so far, in growing steps, on the session's own thread, where it is
    /// also destroyed. Not called again once the awaiting coroutine has been resumed. It must not throw, which would
    /// end the process, and should return soon: all of the session's transfers, and a cancel of this one, wait for it.
    std::function<void(std::int64_t bytesSent)> onBodyProgress = {};
};

struct HTTPResponse {
    int status = 0;
    HTTPHeaders headers;
    std::string body;

    /// The value of the first header called `name`, in any case, without the white space around it.
    std::optional<std::string> header(std::string_view name) const;
};

/// Sends requests and gives their answers. Tests hand in one that answers from a script.
/// Threads: any; the coroutine resumes on its own queue.
class HTTPSession {
public:
    /// In bytes; a larger answer fails as `dataLengthExceedsMaximum`.
    static constexpr std::size_t largestAnswer = std::size_t{16} * 1024 * 1024;

    virtual ~HTTPSession() = default;

    struct Options {
        /// Certificates (PEM) of the authorities to trust instead of the system's; empty: the system's.
        std::string authorities = {};
        /// What silence is measured by; null: the steady clock. Called on the session's own thread.
        std::function<std::chrono::steady_clock::time_point()> now = {};
    };

    /// The real one: kept-alive connections, all on one thread of its own. Redirects are answers, there are no cookies
    /// and no caches, and nothing is ever sent twice: a request on a connection that turns out dead fails. Destroying
    /// it ends the thread and waits for that; transfers still under way end as `Cancelled`. A callback that owns the
    /// last reference may destroy it on that very thread, which then ends soon after.
    static std::shared_ptr<HTTPSession> make(Options options);
    static std::shared_ptr<HTTPSession> make() { return make({}); }

    /// Sends `request` and gives the answer, whatever its status; once it has, the request's body is no longer read.
    /// Throws `URLError`, what the body throws; `Cancelled` once the awaiting task is cancelled, and the connection is
    /// then closed without waiting for it.
    virtual Async<HTTPResponse> send(HTTPRequest request) = 0;
};

} // namespace vorn
