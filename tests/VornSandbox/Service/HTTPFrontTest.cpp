#include "VornSandbox/Service/HTTPFront.h"
#include "tests/VornSandbox/Service/RawClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <memory>

namespace vorn::testing {
namespace {

using namespace sandbox;
using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr HTTPFront::Patience little{.within = 100ms, .between = 1s};

/// A server that answers "fine" to everything.
struct Front {
    explicit Front(
        const HTTPFront::Patience& patience,
        HTTPFront::Serve serve = [](const Call&) { return Answer{.body = "fine"}; })
        : front(0, std::move(serve), log, patience)
    {
    }
    std::string request() const { return rawRequest(front.port(), "GET /", "Connection: close\r\n"); }

    RequestLog log{[](const std::string&) {}};
    HTTPFront front;
};

TEST(HTTPFront, CutsAConnectionThatBringsNoWholeRequest)
{
    const Front test(little);
    for (const std::string said : {"", "GET /", "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\n"}) {
        SCOPED_TRACE(said);
        const RawClient client(test.front.port());
        client.send(said);
        EXPECT_THAT(client.readToEnd(), Not(HasSubstr("fine")));
    }
}

TEST(HTTPFront, CutsAConnectionThatBringsNoOtherRequest)
{
    const Front test(little);
    const RawClient client(test.front.port());
    client.send(rawRequest(test.front.port(), "GET /"));
    EXPECT_THAT(client.readToEnd(), HasSubstr("fine"));
}

TEST(HTTPFront, LetsARequestTakeItsTimeOnceItIsWhole)
{
    std::promise<void> cut;
    const Front test(little, [&](const Call&) {
        cut.get_future().wait(); // until a later connection has been cut for its silence
        return Answer{.body = "fine"};
    });
    const RawClient slow(test.front.port());
    slow.send(test.request());
    const RawClient silent(test.front.port());
    EXPECT_THAT(silent.readToEnd(), IsEmpty());
    cut.set_value();
    EXPECT_THAT(slow.readToEnd(), HasSubstr("fine"));
}

TEST(HTTPFront, ServesARequestHoweverManyConnectionsSayNothing)
{
    const Front test({});
    std::vector<std::unique_ptr<RawClient>> silent;
    for (int i = 0; i < 200; ++i) {
        silent.push_back(std::make_unique<RawClient>(test.front.port()));
        silent.back()->send("GET /");
    }
    const RawClient client(test.front.port());
    client.send(test.request());
    EXPECT_THAT(client.readToEnd(), HasSubstr("fine"));
}

TEST(HTTPFront, SendsNoBodyWhereThereIsNone)
{
    for (const int status : {204, 304}) {
        SCOPED_TRACE(status);
        const Front test({}, [&](const Call&) { return Answer{.status = status, .body = "not sent"}; });
        const RawClient client(test.front.port());
        client.send(test.request());
        const std::string answer = client.readToEnd();
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 " + std::to_string(status)));
        EXPECT_THAT(answer, ::testing::EndsWith("\r\n\r\n"));
    }
}

} // namespace
} // namespace vorn::testing
