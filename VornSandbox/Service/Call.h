#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// One request as the service sees it. Its body is read once, in pieces, when somebody asks for it.
struct Call {
    using Sink = std::function<void(std::string_view piece)>;

    std::string method;
    std::string path;                             ///< without the query, percent-decoded
    std::map<std::string, std::string> query{};   ///< of part URLs, it is a secret
    std::map<std::string, std::string> headers{}; ///< names in lower case
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

    int status = 200;
    std::string contentType = "application/json";
    std::string body{};
    std::vector<std::pair<std::string, std::string>> headers{};

    /// For an answer that goes on: called again and again in place of `body`, until it gives false. Each call must
    /// return within a second.
    std::function<bool(const Write&)> stream{};

    /// What a fault does to the connection instead of answering: `truncate` announces more bytes than it sends.
    enum class Instead { nothing, drop, hang, truncate } instead = Instead::nothing;
};

/// The base URL of the service at `port`, such as "http://127.0.0.1:8787".
std::string serviceURL(int port);

} // namespace vorn::sandbox
