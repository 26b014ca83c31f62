#include "tests/Platform/HTTP/FullPort.h"
#include "tests/Platform/HTTP/SilenceFixture.h"
#include "tests/support/ScopedEnvironment.h"

#include <future>
#include <vector>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using Code = URLError::Code;

class Silence : public SilenceFixture {
protected:
    /// Waits until the session has read the current time, or the request has ended.
    void letTheSessionLook()
    {
        const int before = clock.looks();
        while (!ended && clock.looks() < before + 3) {
            context.runUntilIdle();
            std::this_thread::yield();
        }
    }

    Async<> follow(Async<HTTPResponse> answer)
    {
        try {
            co_await std::move(answer);
        } catch (const URLError& error) {
            failure = error.code();
        }
        ended = true;
    }

    /// Only the system counts the bytes of a head that is still arriving.
    LoopbackServer::Handler sendingHeadSlowly()
    {
        return [this](Exchange& exchange) {
            for (const std::string_view piece : {"HTTP", "/1.1 2", "00 OK\r", "\nContent-Length: 0", "\r\n\r\n"}) {
                passTime(exchange);
                exchange.send(piece);
            }
        };
    }

    bool ended = false;
    std::optional<Code> failure;
};

struct SilenceCase {
    const char* name;
    LoopbackServer::Handler speak; ///< what the server does before it falls silent
};

const std::vector<SilenceCase> cases{
    {"from the head on", [](Exchange&) {}},
    {"within the body", [](Exchange& exchange) { exchange.readBody(4 * 1024 * 1024); }},
    {"instead of an answer", [](Exchange& exchange) { exchange.readWholeBody(); }},
    {"within the answer",
     [](Exchange& exchange) {
         exchange.readWholeBody();
         exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
     }},
};

TEST_F(Silence, EndsTheRequestOnceItLastsForTheLimit)
{
    for (const auto& turn : cases) {
        for (const auto& asked : {get(), put(4 * part)}) {
            SCOPED_TRACE(std::string(turn.name) + (asked.body ? ", with a body" : ", without a body"));
            std::promise<void> silent;
            server.script([&silent, &turn](Exchange& exchange) {
                turn.speak(exchange);
                silent.set_value();
                exchange.stayUntilClosed();
            });
            ended = false;
            failure.reset();
            const Task task(context, follow(session->send(limited(asked))));
            context.runPending();
            silent.get_future().wait();

            clock.advance(limit - 1ms);
            letTheSessionLook();
            EXPECT_FALSE(ended);
            while (!ended) { // bytes in flight still arrive, and restart the time limit
                clock.advance(limit);
                letTheSessionLook();
            }
            EXPECT_THAT(failure, Optional(Code::timedOut));
            EXPECT_TRUE(server.waitUntilAllClosed()) << "the system goes on sending what nobody reads";
        }
    }
}

TEST_F(Silence, EndsTheRequestWithinASecondOfALongLimit)
{
    std::promise<void> asked;
    std::promise<void> answering;
    std::promise<void> silent;
    server.script([&](Exchange& exchange) {
        asked.set_value();
        answering.get_future().wait();
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n12345");
        silent.set_value();
        exchange.stayUntilClosed();
    });
    auto request = get();
    request.inactivityLimit = 120s;
    const Task task(context, follow(session->send(request)));
    context.runPending();
    asked.get_future().wait();
    letTheSessionLook();
    answering.set_value(); // right after a look
    silent.get_future().wait();

    clock.advance(250ms);
    letTheSessionLook();
    clock.advance(119s + 700ms);
    letTheSessionLook();
    EXPECT_FALSE(ended);
    clock.advance(1s);
    letTheSessionLook();
    EXPECT_TRUE(ended);
    EXPECT_THAT(failure, Optional(Code::timedOut));
}

TEST_F(Silence, IsBrokenByAnAnswerThatTricklesIn)
{
    server.script(sendingSlowly("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n", 5));
    EXPECT_EQ(send(limited(get())).body, "xxxxx");
}

TEST_F(Silence, IsBrokenByAHeadThatTricklesIn)
{
    server.script(sendingHeadSlowly());
    EXPECT_EQ(send(limited(get())).status, 200);
}

TEST_F(Silence, IsBrokenByWhatComesThroughAProxy)
{
    const ScopedEnvironment proxy("http_proxy", server.url(""));
    for (int time = 0; time < 2; ++time) { // on a new connection, and on a reused one
        server.script(sendingHeadSlowly());
        EXPECT_EQ(send(limited(request(Method::get, "http://somewhere.invalid/"))).status, 200);
    }
    EXPECT_EQ(server.connectionCount(), 1U);
}

TEST_F(Silence, IsBrokenByABodyThatIsReadSlowly)
{
    server.script(readingSlowly());
    EXPECT_EQ(send(limited(put(4 * part))).status, 201);
}

TEST_F(Silence, OfAServerThatDoesNotAcceptEndsConnecting)
{
    const FullPort full;
    auto asked = request(Method::get, full.url());
    asked.inactivityLimit = 100ms;
    EXPECT_THAT(failureOf(asked), Optional(Code::timedOut));
}

} // namespace
} // namespace vorn::testing
