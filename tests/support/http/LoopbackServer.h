#pragma once

#include "tests/support/http/Exchange.h"
#include "tests/support/http/TestAuthority.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::testing {

/// An HTTP/1.1 server on 127.0.0.1 that parses every request strictly, keeps what arrives, and answers as told. A
/// malformed request, or one without a prepared answer, fails the test when the server is destroyed. Threads: any; each
/// connection has one of its own, on which handlers run.
///
///     LoopbackServer server;
///     server.answer({200, {{"ETag", "\"x\""}}});
///     … a request to server.url("/part/1") …
///     EXPECT_EQ(server.requests().at(0).body, "bytes");
class LoopbackServer {
public:
    using Handler = std::function<void(Exchange&)>;
    using Responder = std::function<Answer(const ReceivedRequest&)>;

    /// Speaks TLS if there is an `identity`. A client that aborts the handshake does not fail the test.
    explicit LoopbackServer(ServerIdentity identity = nullptr);
    /// Ends every connection and waits for the handlers, in which `PeerGone` is then thrown.
    ~LoopbackServer();
    LoopbackServer(LoopbackServer&&) = delete;

    int port() const;
    /// "http://127.0.0.1:<port>" and `path`; "https:" with an identity.
    std::string url(std::string_view path = "/") const;

    // Answers for requests, in the order in which their heads arrive.

    /// Reads the next request without a script to its end and answers it.
    void answer(Answer answer);
    /// As `answer`, for more than an answer can express: called once the request's head has arrived, its body unread.
    void script(Handler handler);
    /// Reads every request without a script, now and later, to its end and answers it with the result of `responder`.
    void respond(Responder responder);
    /// Called with each new connection before anything is read; it may send bytes ahead of any request.
    void greet(std::function<void(Exchange&)> greeting);

    /// From now on, bodies are counted but not kept.
    void discardBodies();

    // What has arrived.

    /// Every request whose head has arrived, in the order of arrival.
    std::vector<ReceivedRequest> requests() const;
    std::size_t connectionCount() const; ///< accepted so far
    std::size_t openConnections() const; ///< those that neither side has closed
    /// The most requests that were under way (head received, answer not yet begun) at the same time.
    std::size_t mostRequestsAtOnce() const;

    // Each waits for up to ten seconds, and returns whether it happened.

    bool waitForRequests(std::size_t count) const;
    bool waitForBodyBytes(std::size_t count) const; ///< of all requests together
    bool waitForConnections(std::size_t count) const;
    bool waitUntilAllClosed() const;

private:
    class State;
    std::shared_ptr<State> state_;
};

} // namespace vorn::testing
