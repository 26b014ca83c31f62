#include "tests/Platform/HTTP/HeldBody.h"
#include "tests/Platform/HTTP/SessionFixture.h"

#include <array>
#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace vorn::testing {
namespace {

constexpr std::size_t part = 8 * 1024 * 1024;
constexpr auto refusal = "HTTP/1.1 403 Forbidden\r\nContent-Length: 7\r\n\r\nexpired";

struct Authority {
    TestAuthority authority;
};

/// A server that refuses before it has read the body, over TCP or (with `true`) TLS.
class Refusal : Authority, public SessionFixture, public ::testing::WithParamInterface<bool> {
protected:
    Refusal() : SessionFixture(GetParam() ? authority.identityOf({}) : nullptr, options()) {}

    void beginAnew() { session = HTTPSession::make(options()); }

private:
    HTTPSession::Options options() const { return {.authorities = authority.certificate()}; }
};

struct RefusalCase {
    const char* name;
    LoopbackServer::Handler handler;
};

const std::vector<RefusalCase> refusals{
    {"and stays",
     [](Exchange& exchange) {
         exchange.send(refusal);
         exchange.stayUntilClosed();
     }},
    {"and reads on",
     [](Exchange& exchange) {
         exchange.send(refusal);
         exchange.readWholeBody(); // the client need not send the rest
         exchange.close();
     }},
    {"and closes",
     [](Exchange& exchange) {
         exchange.send(refusal);
         exchange.close();
     }},
    {"and resets",
     [](Exchange& exchange) {
         exchange.send(refusal);
         exchange.reset();
     }},
    {"having read a part",
     [](Exchange& exchange) {
         exchange.readBody(part / 3);
         exchange.send(refusal);
         exchange.reset();
     }},
    {"after an interim answer",
     [](Exchange& exchange) {
         exchange.readBody(part / 3);
         exchange.send("HTTP/1.1 100 Continue\r\n\r\n");
         exchange.readBody(part / 3);
         exchange.send(refusal);
         exchange.reset();
     }},
    {"without a length, and resets",
     [](Exchange& exchange) {
         exchange.send("HTTP/1.1 403 Forbidden\r\n\r\nexpired");
         exchange.reset();
     }},
};

TEST_P(Refusal, BeforeTheBodyWasReadIsTheAnswer)
{
    const auto asked = put(part);
    for (const auto& [name, handler] : refusals) {
        SCOPED_TRACE(name);
        for (int time = 0; time < 20; ++time) { // the refusal arrives at a random point of the body
            beginAnew();                        // otherwise the request might use a connection that is about to close
            server.script(handler);
            const HTTPResponse response = send(asked);
            EXPECT_EQ(response.status, 403);
            EXPECT_EQ(response.body, "expired");
        }
    }
}

/// Keeps the processors busy, to vary how threads interleave.
class Load {
public:
    Load()
    {
        for (auto& thread : threads_) thread = std::thread([this] { keepBusy(); });
    }
    ~Load()
    {
        over_ = true;
        for (auto& thread : threads_) thread.join();
    }
    Load(Load&&) = delete;

private:
    void keepBusy() const
    {
        while (!over_) continue;
    }

    std::atomic<bool> over_ = false;
    std::array<std::thread, 2> threads_;
};

TEST_P(Refusal, OfABodyOfAnySizeIsTheAnswerUnderLoad)
{
    constexpr std::size_t times = 12;
    const Load load;
    for (const std::size_t size : {std::size_t(1), std::size_t(70'000), std::size_t(300'000), part}) {
        SCOPED_TRACE(size);
        const auto asked = put(size);
        for (std::size_t time = 0; time < times; ++time) {
            beginAnew();
            server.script([=](Exchange& exchange) {
                exchange.readBody(size * time / times);
                exchange.send(refusal);
                exchange.reset();
            });
            const HTTPResponse response = send(asked);
            ASSERT_EQ(response.status, 403);
            ASSERT_EQ(response.body, "expired");
        }
    }
}

TEST_P(Refusal, WhileTheNextBytesAreReadFromTheDiskIsTheAnswer)
{
    std::promise<void> refused;
    server.script([&refused](Exchange& exchange) {
        exchange.readBody(part / 4);
        exchange.send(refusal);
        exchange.reset();
        refused.set_value();
    });
    const auto body = std::make_shared<const HeldBody>(part, part / 4, refused.get_future());
    const HTTPResponse response = send(request(Method::put, server.url(), body));
    EXPECT_EQ(response.status, 403);
    EXPECT_EQ(response.body, "expired");
}

TEST_P(Refusal, IsNotWaitedForWhereTheServerSaysSomethingElse)
{
    std::promise<void> hinted;
    std::promise<std::string> received;
    server.script([&](Exchange& exchange) {
        exchange.readBody(part / 4);
        exchange.send("HTTP/1.1 103 Early Hints\r\n\r\n");
        hinted.set_value();
        exchange.readWholeBody();
        received.set_value(exchange.request().body);
        exchange.answer({.status = 201});
    });
    const auto body = std::make_shared<const HeldBody>(part, part / 4, hinted.get_future());
    EXPECT_EQ(send(request(Method::put, server.url(), body)).status, 201);
    EXPECT_TRUE(received.get_future().get() == std::string(part, 'x')) << "bytes that were put off are sent once";
}

TEST_P(Refusal, IsNotWaitedForWhereTheServerEndsItsHalf)
{
    std::promise<void> ended;
    server.discardBodies();
    server.script([&ended](Exchange& exchange) {
        exchange.readBody(part / 4);
        exchange.finishSending();
        ended.set_value();
        exchange.readWholeBody();
    });
    const auto body = std::make_shared<const HeldBody>(part, part / 4, ended.get_future());
    EXPECT_THAT(failureOf(request(Method::put, server.url(), body)),
                ::testing::Optional(URLError::Code::networkConnectionLost));
}

// A server cannot have accepted what it has not read: the part counts as lost, and is sent again.
TEST_P(Refusal, DoesNotIncludeAnAcceptanceThatIsCutOff)
{
    std::promise<void> accepted;
    server.script([&accepted](Exchange& exchange) {
        exchange.readBody(part / 4);
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\ntaken");
        exchange.reset();
        accepted.set_value();
    });
    const auto body = std::make_shared<const HeldBody>(part, part / 4, accepted.get_future());
    EXPECT_THAT(failureOf(request(Method::put, server.url(), body)),
                ::testing::Optional(URLError::Code::networkConnectionLost));
}

INSTANTIATE_TEST_SUITE_P(Over, Refusal, ::testing::Bool(),
                         [](const auto& over) { return over.param ? std::string("TLS") : std::string("TCP"); });

} // namespace
} // namespace vorn::testing
