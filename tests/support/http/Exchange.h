#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn::testing {

using HeaderList = std::vector<std::pair<std::string, std::string>>;

/// One request as it arrived.
struct ReceivedRequest {
    std::string method;
    std::string target;         ///< as on the request line
    HeaderList headers;         ///< in the order received, names as written
    std::string body;           ///< as far as it was read before the answer began
    bool complete = false;      ///< whether all of the body was read
    std::size_t connection = 0; ///< the number of its connection, from 1

    /// The value of the header `name`, compared without case; none if there is none. Two such headers fail the test.
    std::optional<std::string> header(std::string_view name) const;
};

/// Names of all headers in alphabetical order, as written: to expect exactly these headers.
std::vector<std::string> headerNames(const ReceivedRequest& request);
/// "Name: value" of all headers in alphabetical order.
std::vector<std::string> headersOf(const ReceivedRequest& request);

/// The server's answer to a request. `Content-Length` is added unless the headers have it or `Transfer-Encoding`.
struct Answer {
    int status = 200;
    HeaderList headers = {};
    std::string body = {};
    bool closes = false;         ///< says `Connection: close` and closes
    std::string sentBefore = {}; ///< bytes before the answer, such as "HTTP/1.1 103 Early Hints\r\n\r\n"

    /// An answer with a JSON body.
    static Answer json(int status, std::string body);
    std::string text() const; ///< the bytes of all of it
};

/// Thrown by operations of an `Exchange` once the client is gone or the server must end. Handlers must not catch it.
class PeerGone {};

/// One request on one connection, passed to a handler. When the handler returns, the connection continues with the next
/// request, unless it was closed or a part of the body is unread.
class Exchange {
public:
    virtual ~Exchange() = default;

    /// The head; the body as far as it was read.
    virtual const ReceivedRequest& request() const = 0;

    /// Reads up to `bytes` more of the body and returns how many they were: fewer only at the body's end.
    virtual std::size_t readBody(std::size_t bytes) = 0;
    void readWholeBody() { readBody(static_cast<std::size_t>(-1)); }

    virtual void send(std::string_view bytes) = 0;
    void answer(const Answer& answer);

    /// Ends the connection properly: everything sent arrives.
    virtual void close() = 0;
    /// Ends the connection with a reset, at once.
    virtual void reset() = 0;
    /// Ends the sending half only.
    virtual void finishSending() = 0;

    /// Waits; ends early, with `PeerGone`, only if the server must end.
    virtual void pause(std::chrono::milliseconds duration) = 0;
    /// Neither sends nor reads until the client closes the connection or the server must end.
    virtual void stayUntilClosed() = 0;
};

} // namespace vorn::testing
