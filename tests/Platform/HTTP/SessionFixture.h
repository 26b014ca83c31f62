#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/HTTP/HTTPSession.h"
#include "Platform/HTTP/URLError.h"
#include "tests/support/http/LoopbackServer.h"

#include <algorithm>
#include <cstddef>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vorn {

// NOLINTNEXTLINE(readability-identifier-naming): the name that GoogleTest looks for
inline void PrintTo(URLError::Code code, std::ostream* to)
{
    *to << URLError(code).what();
}

namespace testing {

/// Parses `text`. Throws `std::invalid_argument` if it is not a URL.
inline URL urlOf(const std::string& text)
{
    auto url = URL::parse(text);
    if (!url) throw std::invalid_argument("no URL: " + text);
    return *std::move(url);
}

/// `size` bytes that differ from place to place. Made once for each size.
inline std::shared_ptr<const BytesBody> bodyOf(std::size_t size)
{
    constexpr std::size_t period = 65521; // a prime: no buffer's size is a multiple of it
    static std::map<std::size_t, std::shared_ptr<const BytesBody>> made;
    auto& body = made[size];
    if (body) return body;
    ByteBuffer bytes(size);
    for (std::size_t i = 0; i < std::min(size, period); ++i) bytes[i] = static_cast<std::byte>(i * 31 + i / 251);
    for (std::size_t done = period; done < size; done += period) {
        std::copy_n(bytes.begin(), std::min(period, size - done), bytes.begin() + static_cast<std::ptrdiff_t>(done));
    }
    return body = std::make_shared<const BytesBody>(std::move(bytes));
}

inline std::shared_ptr<const BytesBody> bodyOf(std::string_view text)
{
    return std::make_shared<const BytesBody>(bytesOf(text));
}

/// A real session and a server.
class SessionFixture : public ::testing::Test {
protected:
    using Method = HTTPRequest::Method;

    /// The server speaks TLS if there is an `identity`.
    explicit SessionFixture(const ServerIdentity& identity = nullptr, HTTPSession::Options options = {})
        : server(identity), session(HTTPSession::make(std::move(options)))
    {
    }

    static HTTPRequest request(Method method, const std::string& url, std::shared_ptr<const HTTPBody> body = nullptr)
    {
        return {.method = method, .url = urlOf(url), .body = std::move(body)};
    }
    HTTPRequest get(std::string_view path = "/") const { return request(Method::get, server.url(path)); }
    HTTPRequest post(std::string_view text) const { return request(Method::post, server.url(), bodyOf(text)); }
    HTTPRequest put(std::size_t size) const { return request(Method::put, server.url(), bodyOf(size)); }

    HTTPResponse send(HTTPRequest request) { return context.run(session->send(std::move(request))); }
    /// The failure of `request`; nothing when it succeeds.
    std::optional<URLError::Code> failureOf(HTTPRequest request)
    {
        try {
            send(std::move(request));
        } catch (const URLError& error) {
            return error.code();
        }
        return std::nullopt;
    }

    LoopbackServer server;
    MainContext context;
    std::shared_ptr<HTTPSession> session;
};

} // namespace testing
} // namespace vorn
