#include "tests/Platform/HTTP/SessionFixture.h"

#include <vector>

namespace vorn::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;

class Request : public SessionFixture {};

TEST_F(Request, CarriesOnlyHostWhenItBringsNothing)
{
    server.answer({});
    send(get());
    EXPECT_THAT(headersOf(server.requests().at(0)), ElementsAre("Host: 127.0.0.1:" + std::to_string(server.port())));
}

TEST_F(Request, CarriesItsHeadersAndTheLengthOfItsBody)
{
    server.answer({});
    auto asked = post("{}");
    asked.headers = {
        {"Accept", "application/json"}, {"Content-Type", "application/json"}, {"Authorization", "Bearer t"}};
    send(asked);
    const auto received = server.requests().at(0);
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.body, "{}");
    EXPECT_THAT(headersOf(received),
                ElementsAre("Accept: application/json", "Authorization: Bearer t", "Content-Length: 2",
                            "Content-Type: application/json", "Host: 127.0.0.1:" + std::to_string(server.port())));
}

struct LengthCase {
    const char* name;
    HTTPRequest::Method method;
    std::optional<std::size_t> size;
    const char* length;
};

TEST_F(Request, SaysTheLengthOfItsBodyAndNothingElse)
{
    constexpr std::size_t part = 8 * 1024 * 1024;
    const std::vector<LengthCase> cases{
        {"PUT of a part", Method::put, part, "8388608"}, {"PUT of one byte", Method::put, 1, "1"},
        {"PUT of nothing", Method::put, 0, "0"},         {"PUT without a body", Method::put, std::nullopt, "0"},
        {"POST of nothing", Method::post, 0, "0"},       {"POST without a body", Method::post, std::nullopt, "0"},
        {"POST of much", Method::post, part, "8388608"},
    };
    for (const auto& [name, method, size, length] : cases) {
        SCOPED_TRACE(name);
        server.answer({});
        const auto body = size ? bodyOf(*size) : nullptr;
        send(request(method, server.url(), body));
        const auto received = server.requests().back();
        EXPECT_THAT(headerNames(received), ElementsAre("Content-Length", "Host"));
        EXPECT_THAT(received.header("Content-Length"), Optional(std::string(length)));
        EXPECT_TRUE(received.complete);
        EXPECT_TRUE(received.body == textOf(body ? body->bytes() : ByteView())) << "the bytes differ";
    }
}

TEST_F(Request, SendsAHeaderWithoutAValue)
{
    server.answer({});
    auto asked = get();
    asked.headers = {{"X-Empty", ""}};
    send(asked);
    EXPECT_THAT(server.requests().at(0).header("X-Empty"), Optional(std::string()));
}

} // namespace
} // namespace vorn::testing
