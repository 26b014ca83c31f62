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

/// What the service is asked and answers, apart from how it travels.
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

/// One request. Its body is read once, in pieces, when somebody asks for it.
struct Call {
    using Sink = std::function<void(std::string_view piece)>;

    std::string method;
    std::string path;                             ///< without the query, percent-decoded
    std::map<std::string, std::string> query{};   ///< of part URLs, it is a secret
    std::map<std::string, std::string> headers{}; ///< names in lower case
    std::vector<std::string> arguments{};         ///< what the path has for the placeholders of its route
    std::function<void(const Sink&)> readBody{};  ///< throws when the body breaks off
    int servicePort = 0;                          ///< the port of this service

    const std::string* header(const std::string& lowerCaseName) const;
    std::string queryValue(const std::string& name) const; ///< empty when it is absent

    /// Whether a body was announced, by its length or as chunks.
    bool hasBody() const;
    /// What Content-Length says; nothing when it is absent or no number.
    std::optional<std::int64_t> contentLength() const;

    /// The whole body; a 413 once it is larger than `limit` bytes.
    std::string bodyText(std::size_t limit) const;
};

/// What is answered to it.
struct Answer {
    using Write = std::function<bool(std::string_view piece)>; ///< false once the client is gone

    /// `body` as JSON. Text in it need not be well-formed: names come from the Mac, messages from anybody.
    static Answer of(const nlohmann::json& body, int status = 200);

    int status = 200;
    std::string contentType = "application/json";
    std::string body{};
    std::vector<std::pair<std::string, std::string>> headers{};

    /// For an answer that goes on: called again and again in place of `body`, until it returns false. Each call must
    /// return within a second.
    std::function<bool(const Write&)> stream{};

    /// What a fault does to the connection instead of answering: `truncate` announces more bytes than it sends.
    enum class Instead { nothing, drop, hang, truncate } instead = Instead::nothing;
};

/// What the API wants a request to be, besides the keys of its body.
enum class Frame {
    own,      ///< its handler says
    bodiless, ///< accepts JSON and brings no body
    json,     ///< accepts JSON and brings a JSON body
    tokenless ///< the same, and brings no token either
};

/// Which function answers what. In `pattern`, "*" stands for one whole segment of the path, such as
/// "/submissions/*/abort". `operation` is the name that faults know it by.
struct Route {
    std::string operation;
    std::string method;
    std::string_view pattern;
    std::function<Answer(const Call&)> handler;
    Frame frame = Frame::own;
};

/// The route of the call, whose arguments it fills in. Throws `ServiceError`: 404 for an unknown path, 405 for a known
/// one asked in another way.
const Route& match(const std::vector<Route>& routes, Call& call);

/// The base URL of the service at `port`, such as "http://127.0.0.1:8787".
std::string serviceURL(int port);

/// `text` as a whole number in decimal digits; nothing when it is none, or written in another way than it needs to be.
std::optional<std::int64_t> wholeNumber(std::string_view text);

} // namespace vorn::sandbox
