#include "tests/Platform/HTTP/SessionFixture.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <mutex>
#include <vector>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using Code = URLError::Code;

constexpr std::size_t part = 8 * 1024 * 1024;

class Progress : public SessionFixture {
protected:
    /// Sends the PUT of `size` bytes and gives what was reported until it returned.
    std::vector<std::int64_t> reported(std::size_t size)
    {
        std::mutex mutex;
        std::vector<std::int64_t> seen;
        auto asked = put(size);
        asked.onBodyProgress = [&](std::int64_t bytes) {
            const std::lock_guard lock(mutex);
            seen.push_back(bytes);
        };
        send(asked);
        const std::lock_guard lock(mutex);
        return seen;
    }
};

TEST_F(Progress, GrowsUntilAllHasLeft)
{
    server.answer({});
    const auto seen = reported(part);
    EXPECT_GT(seen.size(), 4U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end(), std::less_equal<>()));
    EXPECT_EQ(seen.back(), static_cast<std::int64_t>(part));
}

TEST_F(Progress, EndsWithTheWholeOfASmallBody)
{
    server.answer({});
    EXPECT_EQ(reported(1).back(), 1);
}

TEST_F(Progress, OfNothingIsNone)
{
    server.answer({});
    EXPECT_THAT(reported(0), ::testing::IsEmpty());
}

TEST_F(Progress, StopsShortOfARefusal)
{
    server.script([](Exchange& exchange) {
        exchange.readBody(1024 * 1024);
        exchange.send("HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n");
        exchange.stayUntilClosed();
    });
    const auto seen = reported(4 * part); // more than the buffers of both sides hold
    EXPECT_LT(seen.back(), static_cast<std::int64_t>(4 * part));
}

class TimeLimit : public SessionFixture {};

TEST_F(TimeLimit, DoesNotEndAnAnswerThatTricklesIn)
{
    server.script([](Exchange& exchange) {
        for (const char c : std::string_view("HTTP/1.1 200 OK\r\n")) exchange.send({&c, 1}), exchange.pause(20ms);
        exchange.send("Content-Length: 20\r\n\r\n");
        for (int i = 0; i < 20; ++i) exchange.send("x"), exchange.pause(20ms);
    });
    auto asked = get();
    asked.inactivityLimit = 250ms; // the whole takes three times as long
    EXPECT_EQ(send(asked).body, std::string(20, 'x'));
}

TEST_F(TimeLimit, DoesNotEndABodyThatIsReadSlowly)
{
    server.script([](Exchange& exchange) {
        while (exchange.readBody(part / 32) > 0) exchange.pause(25ms);
        exchange.answer({});
    });
    auto asked = put(part);
    asked.inactivityLimit = 250ms;
    EXPECT_EQ(send(asked).status, 200);
}

TEST_F(TimeLimit, BeginsAgainWithEachMove)
{
    server.script([](Exchange& exchange) {
        exchange.readBody(part / 2);
        exchange.stayUntilClosed();
    });
    auto asked = put(4 * part);
    asked.inactivityLimit = 200ms;
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_THAT(failureOf(asked), Optional(Code::timedOut));
    EXPECT_GE(std::chrono::steady_clock::now() - begun, 200ms);
    EXPECT_TRUE(server.waitUntilAllClosed()) << "the system goes on sending what nobody reads";
}

TEST_F(TimeLimit, CoversWaitingForAConnectionToBeMade)
{
    // 192.0.2.0/24 is reserved for documents: nobody answers there, if it can be reached at all.
    auto asked = request(Method::get, "http://192.0.2.1:9/");
    asked.inactivityLimit = 100ms;
    EXPECT_THAT(failureOf(asked),
                Optional(::testing::AnyOf(Code::timedOut, Code::notConnectedToInternet, Code::cannotConnectToHost)));
}

} // namespace
} // namespace vorn::testing
