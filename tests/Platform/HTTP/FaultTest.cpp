#include "tests/Platform/HTTP/SessionFixture.h"

#include <functional>
#include <vector>

namespace vorn::testing {
namespace {

using ::testing::Optional;
using Code = URLError::Code;

constexpr std::size_t part = 8 * 1024 * 1024;

class Fault : public SessionFixture {};

TEST_F(Fault, OfAServerThatRefusesConnections)
{
    std::string url;
    {
        const LoopbackServer gone;
        url = gone.url();
    }
    EXPECT_THAT(failureOf(request(Method::get, url)), Optional(Code::cannotConnectToHost));
}

TEST_F(Fault, OfASchemeThatIsNotHTTP)
{
    EXPECT_THAT(failureOf(request(Method::get, "ftp://127.0.0.1/")), Optional(Code::unsupportedURL));
    EXPECT_THAT(failureOf(request(Method::get, "file://localhost/etc/passwd")), Optional(Code::unsupportedURL));
}

TEST_F(Fault, OfAHeaderThatWouldBreakTheLine)
{
    auto asked = get();
    asked.headers = {{"Authorization", "Bearer a\r\nX-Injected: 1"}};
    EXPECT_THAT(failureOf(asked), Optional(Code::unknown));
    EXPECT_EQ(server.connectionCount(), 0U);
}

struct FaultCase {
    const char* name;
    LoopbackServer::Handler handler;
    Code code;
};

/// Each is tried with a GET, a POST and the PUT of a part.
const std::vector<FaultCase> faults{
    {"closed without a word", [](Exchange& exchange) { exchange.close(); }, Code::networkConnectionLost},
    {"reset before the body", [](Exchange& exchange) { exchange.reset(); }, Code::networkConnectionLost},
    {"reset within the body",
     [](Exchange& exchange) {
         exchange.readBody(part / 2);
         exchange.reset();
     },
     Code::networkConnectionLost},
    {"reset after the body",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.reset();
     },
     Code::networkConnectionLost},
    {"closed within the status line",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 20");
         exchange.close();
     },
     Code::networkConnectionLost},
    {"closed within the headers",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nContent-Le");
         exchange.close();
     },
     Code::networkConnectionLost},
    {"closed within the answer's body",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
         exchange.close();
     },
     Code::networkConnectionLost},
    {"reset within the answer's body",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
         exchange.reset();
     },
     Code::networkConnectionLost},
    {"closed within a chunk",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\na\r\n12345");
         exchange.close();
     },
     Code::networkConnectionLost},
    {"closed after an interim answer",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 103 Early Hints\r\n\r\n");
         exchange.close();
     },
     Code::networkConnectionLost},
    {"garbage",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("SSH-2.0-OpenSSH_9.2p1 Debian-2\r\n");
         exchange.close();
     },
     Code::badServerResponse},
    {"an answer without an end",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\n\r\n");
         while (true) exchange.send(std::string(65536, 'x'));
     },
     Code::dataLengthExceedsMaximum},
    {"an answer of more than 16 MiB",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.answer({.body = std::string(16 * 1024 * 1024 + 1, 'x')});
     },
     Code::dataLengthExceedsMaximum},
    {"headers without an end",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\n");
         while (true) exchange.send("X-More: of it\r\n");
     },
     Code::dataLengthExceedsMaximum},
    {"a header without an end",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nX-Long: ");
         while (true) exchange.send(std::string(65536, 'x'));
     },
     Code::dataLengthExceedsMaximum},
};

TEST_F(Fault, IsNamedByWhatHappened)
{
    server.discardBodies();
    for (const auto& fault : faults) {
        for (const auto& asked : {get(), post("{}"), put(part)}) {
            SCOPED_TRACE(std::string(fault.name) +
                         (asked.body ? ", with a body of " + std::to_string(asked.body->size()) : ", without a body"));
            const auto before = server.requests().size();
            server.script(fault.handler);
            EXPECT_THAT(failureOf(asked), Optional(fault.code));
            EXPECT_TRUE(server.waitUntilAllClosed());
            EXPECT_EQ(server.requests().size(), before + 1);
        }
    }
}

TEST_F(Fault, DoesNotReachTheNextRequest)
{
    server.script([](Exchange& exchange) { exchange.reset(); });
    server.answer({.status = 200, .body = "here"});
    EXPECT_THAT(failureOf(get()), Optional(Code::networkConnectionLost));
    EXPECT_EQ(send(get()).body, "here");
}

class KeptAliveConnection : public SessionFixture {
protected:
    /// Opens a connection on which the server handles the second request with `second`, once its head has arrived.
    void dieOn(LoopbackServer::Handler second)
    {
        server.answer({});
        server.script(std::move(second));
        send(get("/first"));
    }

    static Async<> ignoreAnswer(Async<HTTPResponse> answer) { co_await std::move(answer); }

    std::vector<HTTPRequest> everyKind() const { return {get(), post("{}"), put(part)}; }
};

TEST_F(KeptAliveConnection, IsUsedAgain)
{
    for (int i = 0; i < 5; ++i) {
        server.answer({.body = "x"});
        send(put(1000));
    }
    EXPECT_EQ(server.connectionCount(), 1U);
}

TEST_F(KeptAliveConnection, ThatDiesTakesItsRequestWithIt)
{
    for (const auto& asked : everyKind()) {
        for (const bool properly : {true, false}) {
            SCOPED_TRACE(asked.body ? asked.body->size() : 0);
            const auto before = server.requests().size();
            const auto connections = server.connectionCount();
            dieOn([properly](Exchange& exchange) { properly ? exchange.close() : exchange.reset(); });
            EXPECT_THAT(failureOf(asked), Optional(Code::networkConnectionLost));
            EXPECT_TRUE(server.waitUntilAllClosed());
            EXPECT_EQ(server.requests().size(), before + 2) << "the request was sent again";
            EXPECT_EQ(server.connectionCount(), connections + 1) << "a connection was made to send it again";
        }
    }
}

TEST_F(KeptAliveConnection, ThatDiesDoesNotPassItsRequestToAnotherOne)
{
    // Two connections are kept; the chosen one dies, and the other would still work.
    auto both = [this](Exchange& exchange) {
        server.waitForRequests(2); // each needs a connection of its own
        exchange.answer({});
    };
    server.script(both);
    server.script(both);
    const Task one(context, ignoreAnswer(session->send(get("/one"))));
    send(get("/two"));
    context.runUntil([&] { return !one.isRunning(); });
    ASSERT_EQ(server.connectionCount(), 2U);

    server.script([](Exchange& exchange) { exchange.close(); });
    EXPECT_THAT(failureOf(post("{}")), Optional(Code::networkConnectionLost));
    EXPECT_EQ(server.requests().size(), 3U);
    EXPECT_EQ(server.connectionCount(), 2U);
}

TEST_F(KeptAliveConnection, ThatWasClosedBeforehandIsReplaced)
{
    server.script([](Exchange& exchange) {
        exchange.answer({});
        exchange.close();
    });
    send(get());
    ASSERT_TRUE(server.waitUntilAllClosed());
    server.answer({.status = 201});
    EXPECT_EQ(send(put(1000)).status, 201);
    EXPECT_EQ(server.connectionCount(), 2U);
}

} // namespace
} // namespace vorn::testing
