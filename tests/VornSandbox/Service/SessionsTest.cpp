#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sandbox::ServiceOptions;

Reply refresh(const SandboxFixture& fix, const std::string& refreshToken)
{
    return fix.api("POST", "auth/desktop/refresh", json{{"refreshToken", refreshToken}});
}

Reply questWith(const SandboxFixture& fix, const std::string& token)
{
    return fix.api("GET", "desktop/nimbrel", {}, token);
}

TEST(Sessions, RefuseWhoeverHasNoValidToken)
{
    const SandboxFixture fix;
    EXPECT_EQ(questWith(fix, "").status, 401);
    EXPECT_EQ(questWith(fix, "guess").status, 401);
    EXPECT_EQ(questWith(fix, fix.link().refreshToken).status, 401);
}

TEST(Sessions, ExpireAndAreRefreshed)
{
    ServiceOptions options;
    options.settings.tokenLifetime = 60s;
    SandboxFixture fix(options);
    const Tokens first = fix.link();
    fix.advance(59999ms);
    EXPECT_EQ(questWith(fix, first.token).status, 200);
    fix.advance(1ms);
    EXPECT_EQ(questWith(fix, first.token).body["code"], "expired_token");
    const Reply second = refresh(fix, first.refreshToken);
    ASSERT_EQ(second.status, 200);
    EXPECT_EQ(questWith(fix, second.body["token"]).status, 200);
}

TEST(Sessions, EndTheOldTokenWithARefresh)
{
    const SandboxFixture fix;
    const Tokens tokens = fix.link();
    refresh(fix, tokens.refreshToken);
    EXPECT_EQ(questWith(fix, tokens.token).status, 401);
}

TEST(Sessions, EndWhenARefreshTokenComesTwice)
{
    const SandboxFixture fix;
    const Tokens tokens = fix.link();
    const json fresh = refresh(fix, tokens.refreshToken).body;
    EXPECT_EQ(refresh(fix, tokens.refreshToken).status, 401);
    EXPECT_EQ(questWith(fix, fresh["token"]).status, 401);
    EXPECT_EQ(refresh(fix, fresh["refreshToken"]).status, 401);
}

TEST(Sessions, GiveOneOfManyConcurrentRefreshesANewPair)
{
    const SandboxFixture fix;
    const Tokens tokens = fix.link();
    std::vector<int> statuses(8);
    std::vector<std::thread> threads;
    for (int& status : statuses) threads.emplace_back([&] { status = refresh(fix, tokens.refreshToken).status; });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::ranges::count(statuses, 200), 1);
    EXPECT_EQ(std::ranges::count(statuses, 401), 7);
}

TEST(Sessions, EndWithALogout)
{
    const SandboxFixture fix;
    const Tokens tokens = fix.link();
    const Tokens other = fix.link();
    EXPECT_EQ(fix.api("POST", "auth/desktop/logout", {}, tokens.token).body, json({{"status", "revoked"}}));
    EXPECT_EQ(questWith(fix, tokens.token).status, 401);
    EXPECT_EQ(refresh(fix, tokens.refreshToken).status, 401);
    EXPECT_EQ(fix.api("POST", "auth/desktop/logout", {}, tokens.token).status, 401);
    EXPECT_EQ(questWith(fix, other.token).status, 200);
}

} // namespace
} // namespace vorn::testing
