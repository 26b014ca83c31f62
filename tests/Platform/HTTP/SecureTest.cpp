#include "tests/Platform/HTTP/SessionFixture.h"

#include <chrono>
#include <vector>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using Code = URLError::Code;

constexpr std::size_t part = 8 * 1024 * 1024;

struct Authority {
    TestAuthority authority;
};

/// A server with a certificate of an authority that the session trusts.
class Secure : Authority, public SessionFixture {
protected:
    Secure() : SessionFixture(authority.identityOf({}), {.authorities = authority.certificate()}) {}
};

TEST_F(Secure, CarriesRequestsAndAnswers)
{
    server.answer(Answer::json(201, "{}"));
    auto asked = post("private");
    asked.headers = {{"Authorization", "Bearer secret"}};
    const HTTPResponse response = send(asked);
    EXPECT_EQ(response.status, 201);
    EXPECT_EQ(response.body, "{}");
    const auto received = server.requests().at(0);
    EXPECT_EQ(received.body, "private");
    EXPECT_THAT(headersOf(received), ::testing::ElementsAre("Authorization: Bearer secret", "Content-Length: 7",
                                                            "Host: 127.0.0.1:" + std::to_string(server.port())));
}

TEST_F(Secure, CarriesAWholePartAndItsETag)
{
    server.answer({.headers = {{"ETag", "\"part one\""}}});
    const HTTPResponse response = send(put(part));
    EXPECT_THAT(response.header("etag"), Optional(std::string("\"part one\"")));
    const std::string received = server.requests().at(0).body;
    EXPECT_TRUE(std::ranges::equal(bytesOf(received), bodyOf(part)->bytes()));
}

TEST_F(Secure, GivesAnAnswerThatIsLargerThanARecord)
{
    server.answer({.body = std::string(1'000'000, 'x')});
    EXPECT_EQ(send(get()).body, std::string(1'000'000, 'x'));
}

TEST_F(Secure, KeepsItsConnection)
{
    for (int i = 0; i < 5; ++i) {
        server.answer({});
        send(put(100'000));
    }
    EXPECT_EQ(server.connectionCount(), 1U);
    EXPECT_EQ(server.requests().size(), 5U);
}

TEST_F(Secure, KeepsItsConnectionForRequestsOfEveryKind)
{
    for (int i = 0; i < 3; ++i) {
        server.answer({});
        send(get());
        server.answer({});
        send(put(100'000));
    }
    EXPECT_EQ(server.connectionCount(), 1U);
}

TEST_F(Secure, CutWithinTheBodyIsALostConnection)
{
    server.script([](Exchange& exchange) {
        exchange.readBody(part / 2);
        exchange.reset();
    });
    EXPECT_THAT(failureOf(put(part)), Optional(Code::networkConnectionLost));
    EXPECT_EQ(server.requests().size(), 1U);
}

/// One request to a server with which no secure connection can be made.
class Attempt : public SessionFixture {
public:
    Attempt(const ServerIdentity& identity, const HTTPSession::Options& options) : SessionFixture(identity, options) {}
    void TestBody() override {}

    /// Returns its failure, and checks that the server has received nothing.
    std::optional<Code> failure()
    {
        auto asked = put(1000);
        asked.headers = {{"Authorization", "Bearer secret"}};
        const auto result = failureOf(asked);
        EXPECT_TRUE(server.waitForConnections(1));
        EXPECT_TRUE(server.waitUntilAllClosed());
        EXPECT_EQ(server.connectionCount(), 1U);
        EXPECT_TRUE(server.requests().empty());
        return result;
    }
};

class Distrust : public ::testing::Test {
protected:
    TestAuthority authority;
    HTTPSession::Options trusting{.authorities = authority.certificate()};
};

TEST_F(Distrust, MeetsACertificateThatIsNotForThisServer)
{
    const std::vector<TestAuthority::Subject> subjects{
        {.host = "localhost"},      {.host = "127.0.0.2"}, {.host = "*.0.0.1"}, {.begins = -2h, .ends = -1h}, // expired
        {.begins = 1h, .ends = 2h},
    };
    for (const auto& subject : subjects) {
        SCOPED_TRACE(subject.host + " from " + std::to_string(subject.begins.count()) + " s");
        EXPECT_THAT(Attempt(authority.identityOf(subject), trusting).failure(), Optional(Code::secureConnectionFailed));
    }
}

TEST_F(Distrust, MeetsAnUnknownAuthority)
{
    EXPECT_THAT(Attempt(authority.identityOf({}), {}).failure(), Optional(Code::secureConnectionFailed));
    const TestAuthority other; // of the same name
    EXPECT_THAT(Attempt(other.identityOf({}), trusting).failure(), Optional(Code::secureConnectionFailed));
}

TEST_F(Distrust, MeetsAnInvalidAuthority)
{
    EXPECT_THAT(Attempt(authority.identityOf({}), {.authorities = "not a certificate"}).failure(),
                Optional(Code::secureConnectionFailed));
}

class NotSecure : public SessionFixture {
protected:
    HTTPRequest secret() const
    {
        auto asked = request(Method::put, "https://127.0.0.1:" + std::to_string(server.port()), bodyOf("private"));
        asked.headers = {{"Authorization", "Bearer secret"}};
        return asked;
    }
};

TEST_F(NotSecure, AServerWithoutEncryptionIsToldNothing)
{
    server.greet([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
        exchange.close();
    });
    EXPECT_THAT(failureOf(secret()), Optional(Code::secureConnectionFailed));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(NotSecure, AServerThatNeverShakesHandsIsLeft)
{
    server.greet([](Exchange& exchange) { exchange.stayUntilClosed(); });
    auto asked = secret();
    asked.inactivityLimit = 100ms;
    EXPECT_THAT(failureOf(asked), Optional(Code::timedOut));
    EXPECT_TRUE(server.waitUntilAllClosed());
}

} // namespace
} // namespace vorn::testing
