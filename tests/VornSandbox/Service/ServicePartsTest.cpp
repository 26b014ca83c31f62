#include "VornSandbox/Service/HTTPFront.h"
#include "VornSandbox/Service/ServiceOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

using namespace sandbox;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

std::optional<int> parse(std::vector<const char*> arguments, ServiceOptions& options)
{
    arguments.insert(arguments.begin(), "vorn-sandbox");
    return ServiceOptions::parse(static_cast<int>(arguments.size()), arguments.data(), options);
}

TEST(ReviewPlan, IsReadFromItsText)
{
    EXPECT_EQ(ReviewPlan::parse("approved")->outcome.status, "approved");
    EXPECT_EQ(ReviewPlan::parse("expired")->outcome.status, "expired");
    EXPECT_EQ(ReviewPlan::parse("rejected:some_new_reason")->outcome.reason, "some_new_reason");
    EXPECT_EQ(ReviewPlan::parse("manual")->kind, ReviewPlan::Kind::manual);
    EXPECT_EQ(ReviewPlan::parse("checked")->kind, ReviewPlan::Kind::checked);
    for (const char* text : {"", "rejected", "rejected:", "rejected:No Key", "approved:x", "approved:", "other"}) {
        EXPECT_FALSE(ReviewPlan::parse(text)) << text;
    }
}

TEST(RequestLog, WritesOneLineWhateverThePath)
{
    std::vector<std::string> lines;
    RequestLog log([&](const std::string& line) { lines.push_back(line); });
    log.request({.method = "GET", .path = "/a\nb\x1b[1m", .outcome = "404", .received = 1, .sent = 2, .took = 3ms});
    EXPECT_THAT(lines, ElementsAre("GET /a%0Ab%1B[1m 404 1>2 bytes 3 ms"));
}

TEST(RequestLog, KeepsWhatATerminalObeysOutOfWarnings)
{
    std::vector<std::string> lines;
    RequestLog log([&](const std::string& line) { lines.push_back(line); });
    log.warning("GET /a\nb has the header x-\x1b]0;title\x07\x9b" + std::string(1000, 'x'));
    EXPECT_THAT(lines, ElementsAre(::testing::StartsWith("warning: GET /a%0Ab has the header x-%1B]0;title%07%9Bxxx")));
    EXPECT_LT(lines.front().size(), 400U);
}

TEST(Routes, TakeWholeSegmentsForPlaceholders)
{
    const std::vector<Route> routes{{"one", "GET", "/a/*/b", [](const Call&) { return Answer{}; }}};
    Call call{.method = "GET", .path = "/a/x/b"};
    EXPECT_EQ(match(routes, call).operation, "one");
    EXPECT_THAT(call.arguments, ElementsAre("x"));
    for (const char* path : {"/a//b", "/a/x/y/b", "/a/x/b/", "/a/x", "a/x/b", ""}) {
        Call other{.method = "GET", .path = path};
        EXPECT_THROW(match(routes, other), ServiceError) << path;
    }
}

TEST(ServiceOptions, AreReadFromTheCommandLine)
{
    ServiceOptions options;
    const auto code = parse({"--port",
                             "0",
                             "--handle",
                             "a@b.c",
                             "--handle",
                             "+1",
                             "--user",
                             "Robin",
                             "--delay",
                             "0.25",
                             "--review",
                             "rejected:wrong_provider",
                             "--fault",
                             "quest=500x1",
                             "--fault",
                             "abort=drop",
                             "--max-bytes",
                             "5000000000",
                             "--reward",
                             "3.5",
                             "--state",
                             "/tmp/x",
                             "--expired-first-urls",
                             "--auto-approve"},
                            options);
    EXPECT_EQ(code, std::nullopt);
    EXPECT_EQ(options.port, 0);
    EXPECT_THAT(options.settings.handles, ElementsAre("a@b.c", "+1"));
    EXPECT_THAT(options.settings.users, ElementsAre("Robin"));
    EXPECT_EQ(options.settings.reviewStep, 250ms);
    EXPECT_EQ(options.settings.review.outcome.reason, "wrong_provider");
    EXPECT_EQ(options.faults.size(), 2U);
    EXPECT_EQ(options.settings.maxBytes, 5'000'000'000);
    EXPECT_EQ(options.settings.rewardUsd, 3.5);
    EXPECT_EQ(options.state, "/tmp/x");
    EXPECT_TRUE(options.settings.expiredFirstUrls);
    EXPECT_TRUE(options.settings.autoApprove);
}

TEST(ServiceOptions, RefuseWhatMakesNoSense)
{
    for (const auto& arguments : std::vector<std::vector<const char*>>{{"--review", "perhaps"},
                                                                       {"--fault", "quest"},
                                                                       {"--port", "70000"},
                                                                       {"--delay", "-1"},
                                                                       {"--delay", "nan"},
                                                                       {"--delay", "1e300"},
                                                                       {"--cooldown", "inf"},
                                                                       {"--reward", "nan"},
                                                                       {"--reward", "-0.5"},
                                                                       {"--reward", "1e7"},
                                                                       {"--reward", "much"},
                                                                       {"--poll-interval", "-1"},
                                                                       {"--poll-interval", "99999999999999999999"},
                                                                       {"--max-bytes", "-1"},
                                                                       {"--initial-parts", "1e9"},
                                                                       {"--part-size", "0"},
                                                                       {"--user", ""},
                                                                       {"--state", ""},
                                                                       {"--other"}}) {
        ServiceOptions options;
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(parse(arguments, options), 2) << arguments.front();
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr(arguments.front()));
    }
}

} // namespace
} // namespace vorn::testing
