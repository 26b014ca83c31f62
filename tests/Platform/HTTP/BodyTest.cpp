#include "tests/Platform/HTTP/SessionFixture.h"

namespace vorn::testing {
namespace {

/// Announces `size` bytes, returns `given`, then calls `end`.
class BreakingBody final : public HTTPBody {
public:
    using End = std::function<std::size_t()>;

    BreakingBody(std::int64_t size, std::int64_t given, End end) : size_(size), given_(given), end_(std::move(end)) {}

    std::int64_t size() const noexcept override { return size_; }
    std::size_t read(std::int64_t at, std::span<std::byte> into) const override
    {
        if (at >= given_) return end_();
        const auto count = std::min<std::size_t>(into.size(), static_cast<std::size_t>(given_ - at));
        std::fill_n(into.begin(), count, std::byte{'x'});
        return count;
    }

private:
    std::int64_t size_, given_;
    End end_;
};

class Body : public SessionFixture {
protected:
    HTTPRequest putOf(std::int64_t size, std::int64_t given, BreakingBody::End end) const
    {
        return request(Method::put, server.url(), std::make_shared<const BreakingBody>(size, given, std::move(end)));
    }
    /// Has the server read until the client disconnects.
    void readWhatComes()
    {
        server.script([](Exchange& exchange) { exchange.readWholeBody(); });
    }
};

TEST_F(Body, ThatFailsFailsTheRequestWithItsOwnError)
{
    readWhatComes();
    const auto fail = []() -> std::size_t { throw std::domain_error("the disk is gone"); };
    EXPECT_THAT([&] { send(putOf(1000000, 500000, fail)); },
                ::testing::ThrowsMessage<std::domain_error>("the disk is gone"));
    EXPECT_TRUE(server.waitForRequests(1));
    EXPECT_TRUE(server.waitUntilAllClosed());
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(Body, ThatFailsBeforeItsFirstByteFailsTheRequest)
{
    readWhatComes();
    const auto fail = []() -> std::size_t { throw std::domain_error("the disk is gone"); };
    EXPECT_THROW(send(putOf(1000, 0, fail)), std::domain_error);
}

TEST_F(Body, ThatIsShorterThanAnnouncedFailsTheRequest)
{
    readWhatComes();
    EXPECT_EQ(failureOf(putOf(1000000, 700000, [] { return std::size_t{0}; })),
              URLError::Code::requestBodyStreamExhausted);
    EXPECT_TRUE(server.waitForRequests(1));
    EXPECT_TRUE(server.waitUntilAllClosed());
}

TEST_F(Body, IsAskedForNoMoreThanWasAnnounced)
{
    server.answer({});
    const auto tooMuch = []() -> std::size_t { throw std::logic_error("asked beyond the end"); };
    EXPECT_EQ(send(putOf(700000, 700000, tooMuch)).status, 200);
    EXPECT_EQ(server.requests().at(0).body, std::string(700000, 'x'));
}

} // namespace
} // namespace vorn::testing
