#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/VornMacCore/Client/AuthenticatedCalls.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <tuple>
#include <utility>
#include <variant>

namespace vorn {
namespace {

using testing::Answer;
using testing::AuthenticatedCall;
using testing::Exchange;
using testing::ServiceFixture;
using Code = URLError::Code;

/// A failure of the service, and what a call makes of it.
struct Fault {
    const char* name;
    std::function<void(Exchange&)> play;
    std::variant<URLError, APIError> error;
    std::size_t lines = 0; ///< in the log
};

std::ostream& operator<<(std::ostream& out, const Fault& fault)
{
    return out << fault.name;
}

Fault answers(const char* name, Answer answer, APIError error, std::size_t lines = 0)
{
    return {name,
            [answer = std::move(answer)](Exchange& exchange) {
                exchange.readWholeBody();
                exchange.answer(answer);
            },
            std::move(error), lines};
}

const URLError lost(Code::networkConnectionLost);
const APIError invalid(APIError::InvalidResponse{});

std::vector<Fault> faults()
{
    return {
        {"ResetBeforeTheBody", [](Exchange& exchange) { exchange.reset(); }, lost},
        {"ResetWithinTheBody",
         [](Exchange& exchange) {
             exchange.readBody(1);
             exchange.reset();
         },
         lost},
        {"ResetAfterTheBody",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.reset();
         },
         lost},
        {"ClosedWithoutAnswer",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.close();
         },
         lost},
        {"Truncated",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"");
             exchange.close();
         },
         lost},
        {"BrokenOffInTheHead",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.send("HTTP/1.1 200 OK\r\nContent-");
             exchange.close();
         },
         lost},
        {"Endless",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
             const std::string piece(1024 * 1024, ' ');
             while (true) exchange.send(piece); // until the client disconnects
         },
         invalid},
        {"NoHTTP",
         [](Exchange& exchange) {
             exchange.readWholeBody();
             exchange.send("220 mail.example.com ESMTP\r\n");
             exchange.close();
         },
         invalid},
        answers("NotJSON", {.body = "<html>welcome</html>"}, invalid, 1),
        answers("NoRecord", Answer::json(200, "{}"), invalid, 1),
        answers("TooDeep", Answer::json(200, R"({"x":)" + std::string(100'000, '[') + std::string(100'000, ']') + "}"),
                invalid, 1),
        answers("Empty", {.status = 204}, invalid, 1),
        answers("Redirect", {.status = 307, .headers = {{"Location", "/elsewhere"}}}, testing::httpError(307)),
        answers("NotThere", {.status = 404}, testing::httpError(404)),
        answers("Refusal", Answer::json(422, testing::errorJSON("Not now.", "busy")),
                testing::httpError(422, "Not now.", "busy")),
        answers("RefusalAfterEarlyHints", {.status = 503, .sentBefore = "HTTP/1.1 103 Early Hints\r\n\r\n"},
                testing::httpError(503)),
    };
}

std::vector<AuthenticatedCall> allCalls()
{
    auto calls = testing::authenticatedCalls();
    calls.push_back({"CreateDeviceLink", [](const VornAPI& api) -> Async<> {
                         co_await api.createDeviceLink({"Mac", "macos", "1.0.0", std::nullopt});
                     }});
    calls.push_back({"PollDeviceLink",
                     [](const VornAPI& api) -> Async<> { co_await api.pollDeviceLink("link-1", "secret-canary-1"); }});
    return calls;
}

using CallAndFault = std::tuple<AuthenticatedCall, Fault>;

class FaultyService : public ::testing::TestWithParam<CallAndFault> {};

TEST_P(FaultyService, FailsTheCallOnceAndKeepsTheSession)
{
    const auto& [call, fault] = GetParam();
    ServiceFixture fix;
    fix.server.script(fault.play);
    // An abort ignores the answer, so any answer is good.
    const bool isIgnored = call.name == "AbortSubmission" && fault.lines > 0;
    if (isIgnored)
        EXPECT_NO_THROW(fix.run(call.call(fix.api)));
    else if (const auto* expected = std::get_if<URLError>(&fault.error))
        EXPECT_EQ(testing::errorOf<URLError>(fix.main, call.call(fix.api)), *expected);
    else
        EXPECT_EQ(fix.apiError(call.call(fix.api)), std::get<APIError>(fault.error));
    EXPECT_EQ(fix.requests().size(), 1U);
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
    EXPECT_EQ(fix.log.lines().size(), isIgnored ? 0U : fault.lines);
}

INSTANTIATE_TEST_SUITE_P(, FaultyService,
                         ::testing::Combine(::testing::ValuesIn(allCalls()), ::testing::ValuesIn(faults())),
                         [](const auto& info) { return std::get<0>(info.param).name + std::get<1>(info.param).name; });

/// Faults of the requests that renew or end a session, which show in the call that needs them, or in the log.
class FaultyRefresh : public ::testing::TestWithParam<Fault> {};

TEST_P(FaultyRefresh, FailsTheCallThatNeedsIt)
{
    const Fault& fault = GetParam();
    ServiceFixture fix;
    fix.server.answer({.status = 401});
    fix.server.script(fault.play);
    const auto* refusal = std::get_if<APIError>(&fault.error);
    const bool isRefused = refusal != nullptr && *refusal != invalid;
    if (refusal == nullptr)
        EXPECT_EQ(testing::errorOf<URLError>(fix.main, fix.api.submission("sub-1")), std::get<URLError>(fault.error));
    else
        EXPECT_EQ(fix.apiError(fix.api.submission("sub-1")),
                  isRefused ? APIError(APIError::SessionExpired{}) : invalid);
    EXPECT_EQ(fix.requests().size(), 2U);
    EXPECT_EQ(fix.tokens->load(), isRefused ? std::nullopt : std::optional(testing::adasSession()));
}

TEST_P(FaultyRefresh, IsLoggedOnceByASignOut)
{
    const Fault& fault = GetParam();
    ServiceFixture fix;
    fix.server.script(fault.play);
    fix.run(fix.api.logout());
    EXPECT_EQ(fix.requests().size(), 1U);
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    ASSERT_EQ(fix.log.lines().size(), 1 + fault.lines);
    EXPECT_TRUE(fix.log.lines().back().starts_with("[api] logout failed: "));
}

INSTANTIATE_TEST_SUITE_P(, FaultyRefresh, ::testing::ValuesIn(faults()),
                         [](const auto& info) { return std::string(info.param.name); });

/// Divides the inactivity limit of each request by 100.
class HastySession final : public HTTPSession {
public:
    Async<HTTPResponse> send(HTTPRequest request) override
    {
        request.inactivityLimit /= 100;
        return session_->send(std::move(request));
    }

private:
    std::shared_ptr<HTTPSession> session_ = HTTPSession::make();
};

TEST(SilentService, EndsEveryCall)
{
    ServiceFixture fix;
    const VornAPI api(configurationOf(fix.server), std::make_shared<HastySession>(), fix.tokens);
    for (const auto& [name, call] : allCalls()) {
        SCOPED_TRACE(name);
        fix.server.script([](Exchange& exchange) {
            exchange.readWholeBody();
            exchange.stayUntilClosed();
        });
        EXPECT_EQ(testing::errorOf<URLError>(fix.main, call(api)), URLError(Code::timedOut));
    }
    EXPECT_EQ(fix.requests().size(), allCalls().size());
}

} // namespace
} // namespace vorn
