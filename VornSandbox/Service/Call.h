#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Requests and answers of the service, independent of their transport.
namespace vorn::sandbox {

/// A refused request: the HTTP status, and the answer's "code" (for programs) and "message" (for people).
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

/// One request. Its body is read once, in pieces, on demand.
struct Call {
    using Sink = std::function<void(std::string_view piece)>;

    std::string method;
    std::string path;                             ///< without the query, percent-decoded
    std::map<std::string, std::string> query{};   ///< holds a secret in part URLs
    std::map<std::string, std::string> headers{}; ///< names in lower case
    std::vector<std::string> arguments{};         ///< the path's segments for the route's placeholders
    std::function<void(const Sink&)> readBody{};  ///< throws when the body breaks off
    int servicePort = 0;                          ///< the port of this service

    const std::string* header(const std::string& lowerCaseName) const;
    std::string queryValue(const std::string& name) const; ///< empty when it is absent

    /// Whether a body was announced, by its length or as chunks.
    bool hasBody() const;
    /// The value of Content-Length; nothing if it is absent or not a whole number.
    std::optional<std::int64_t> contentLength() const;

    /// The whole body; throws a 413 if it is larger than `limit` bytes.
    std::string bodyText(std::size_t limit) const;
};

/// The answer to a call.
struct Answer {
    using Write = std::function<bool(std::string_view piece)>; ///< false once the client is gone

    /// `body` as JSON. Text in it need not be well-formed: names come from the Mac, messages from anyone.
    static Answer of(const nlohmann::json& body, int status = 200);

    int status = 200;
    std::string contentType = "application/json";
    std::string body{};
    std::vector<std::pair<std::string, std::string>> headers{};

    /// For a streamed answer: called repeatedly in place of `body`, until it returns false. Each call must return
    /// within a second.
    std::function<bool(const Write&)> stream{};

    /// What happens to the connection instead of an answer, for faults. `truncate` announces more bytes than it sends.
    enum class Instead { nothing, drop, hang, truncate } instead = Instead::nothing;
};

/// What the API requires of a request, apart from the keys of its body.
enum class Frame {
    own,      ///< checked by the handler itself
    bodiless, ///< accepts JSON and has no body
    json,     ///< accepts JSON and has a JSON body
    tokenless ///< the same, and has no token
};

/// A kind of request and its handler. In `pattern`, "*" stands for one whole segment of the path, such as
/// "/submissions/*/abort". `operation` is the name by which faults refer to it.
struct Route {
    std::string operation;
    std::string method;
    std::string_view pattern;
    std::function<Answer(const Call&)> handler;
    Frame frame = Frame::own;
};

/// Returns a handler that calls `method` of `object`.
template <class Object>
auto handlerOf(Object& object, Answer (Object::*method)(const Call&))
{
    return [&object, method](const Call& call) { return (object.*method)(call); };
}

/// Returns the route of the call and fills in its arguments. Throws `ServiceError`: 404 for an unknown path, 405 for a
/// known one with another method.
const Route& match(const std::vector<Route>& routes, Call& call);

/// The base URL of the service at `port`, such as "http://127.0.0.1:8787".
std::string serviceURL(int port);

/// Reads `text` as a whole number in decimal digits; nothing for any other text, including one with leading zeros.
std::optional<std::int64_t> wholeNumber(std::string_view text);

} // namespace vorn::sandbox
