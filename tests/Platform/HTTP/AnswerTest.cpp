#include "tests/Platform/HTTP/SessionFixture.h"

#include <vector>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::Pair;

constexpr std::size_t part = 8 * 1024 * 1024;

class AnswerTo : public SessionFixture {};

TEST_F(AnswerTo, IsGivenAsItWasReceived)
{
    server.script([](Exchange& exchange) {
        exchange.send(
            "HTTP/1.1 200 OK\r\nContent-Length: 3\r\neTaG:  \"a b\"; W/ \t\r\nX-Empty:\r\nX-Two: 1\r\nX-Two: 2"
            "\r\n\r\nabc");
    });
    const HTTPResponse response = send(get());
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.body, "abc");
    EXPECT_THAT(response.headers, ElementsAre(Pair("Content-Length", "3"), Pair("eTaG", "\"a b\"; W/"),
                                              Pair("X-Empty", ""), Pair("X-Two", "1"), Pair("X-Two", "2")));
    EXPECT_THAT(response.header("ETag"), Optional(std::string("\"a b\"; W/")));
    EXPECT_EQ(response.header("Location"), std::nullopt);
}

TEST_F(AnswerTo, IsNotDecoded)
{
    server.answer({.headers = {{"Content-Encoding", "gzip"}}, .body = "not really"});
    EXPECT_EQ(send(get()).body, "not really");
}

TEST_F(AnswerTo, MayComeInChunksWithATrailer)
{
    server.script([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\nETag: "
                      "\"trailer\"\r\n\r\n");
    });
    const HTTPResponse response = send(get());
    EXPECT_EQ(response.body, "abcde");
    EXPECT_EQ(response.header("ETag"), std::nullopt);
}

TEST_F(AnswerTo, MayBeAsLargeAs16MiB)
{
    server.answer({.body = std::string(16 * 1024 * 1024, 'x')});
    EXPECT_EQ(send(get()).body.size(), 16U * 1024 * 1024);
}

TEST_F(AnswerTo, MayEndWithTheConnection)
{
    server.script([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\n\r\nto the end");
        exchange.close();
    });
    EXPECT_EQ(send(get()).body, "to the end");
}

TEST_F(AnswerTo, IsTheFinalOneWhateverCameBefore)
{
    server.answer(
        {.status = 200,
         .headers = {{"ETag", "\"final\""}},
         .sentBefore = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nETag: \"early\"\r\nLink: x\r\n\r\n"});
    const HTTPResponse response = send(put(part));
    EXPECT_EQ(response.status, 200);
    EXPECT_THAT(response.headers, ElementsAre(Pair("ETag", "\"final\""), Pair("Content-Length", "0")));
}

TEST_F(AnswerTo, IsARedirectWhenTheServerRedirects)
{
    for (const int status : {301, 302, 303, 307, 308}) {
        SCOPED_TRACE(status);
        server.answer({.status = status, .headers = {{"Location", server.url("/elsewhere")}}});
        auto asked = post("{}");
        asked.headers = {{"Authorization", "Bearer secret"}};
        EXPECT_EQ(send(asked).status, status);
    }
    EXPECT_EQ(server.requests().size(), 5U);
}

TEST_F(AnswerTo, IsAnAnswerToACredentialsQuestionToo)
{
    for (const int status : {401, 407}) {
        server.answer({.status = status, .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}});
        EXPECT_EQ(send(post("{}")).status, status);
    }
    EXPECT_EQ(server.requests().size(), 2U);
}

TEST_F(AnswerTo, LeavesNoCookieBehind)
{
    server.answer({.headers = {{"Set-Cookie", "a=b"}}});
    server.answer({});
    send(get());
    send(get());
    EXPECT_EQ(server.requests().at(1).header("Cookie"), std::nullopt);
}

} // namespace
} // namespace vorn::testing
