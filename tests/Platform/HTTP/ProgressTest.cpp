#include "tests/Platform/HTTP/SessionFixture.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <vector>

namespace vorn::testing {
namespace {

constexpr std::size_t part = 8 * 1024 * 1024;

class Progress : public SessionFixture {
protected:
    /// Sends a PUT of `size` bytes and returns what was reported until it ended.
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

/// The callback throws on the session's thread, where nothing can catch the exception.
void reportToOneWhoThrows()
{
    LoopbackServer server;
    server.answer({});
    MainContext context;
    HTTPRequest asked{.method = HTTPRequest::Method::put, .url = urlOf(server.url()), .body = bodyOf(1)};
    asked.onBodyProgress = [](std::int64_t) { throw std::runtime_error("from the callback"); };
    context.run(HTTPSession::make()->send(asked));
}

TEST(ProgressDeathTest, AReportThatThrowsEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(reportToOneWhoThrows(), "from the callback");
}

} // namespace
} // namespace vorn::testing
