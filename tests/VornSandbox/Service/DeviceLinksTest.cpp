#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gtest/gtest.h>

#include <set>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sandbox::ServiceOptions;

std::string pathOf(const json& link)
{
    return "links/" + link["linkId"].get<std::string>();
}

TEST(DeviceLinks, GoFromPendingOverScannedToApproved)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    EXPECT_EQ(fix.poll(link).body, json({{"status", "pending"}}));
    EXPECT_EQ(fix.phone(pathOf(link) + "/scan").status, 200);
    EXPECT_EQ(fix.poll(link).body, json({{"status", "scanned"}}));
    EXPECT_EQ(fix.phone(pathOf(link) + "/approve", {{"userId", "usr_1"}}).status, 200);
    const json approved = fix.poll(link).body;
    EXPECT_EQ(approved["status"], "approved");
    EXPECT_EQ(approved["session"]["user"], json({{"id", "usr_1"}, {"displayName", "Sam Rivera"}}));
}

TEST(DeviceLinks, HandTheSessionOutOnce)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    fix.phone(pathOf(link) + "/scan");
    fix.phone(pathOf(link) + "/approve", {{"userId", "usr_1"}});
    EXPECT_TRUE(fix.poll(link).body.contains("session"));
    EXPECT_EQ(fix.poll(link).body, json({{"status", "approved"}}));
}

TEST(DeviceLinks, AreKeptFromThoseWithoutThePollSecret)
{
    const SandboxFixture fix;
    json link = fix.createLink();
    const Reply wrong = fix.poll({{"linkId", link["linkId"]}, {"pollSecret", "guess"}});
    const Reply unknown = fix.poll({{"linkId", "lnk_0"}, {"pollSecret", link["pollSecret"]}});
    EXPECT_EQ(wrong.status, 404);
    EXPECT_EQ(unknown.text, wrong.text); // the answers do not reveal which IDs exist
}

TEST(DeviceLinks, AreScannedByTheTextOfTheirCode)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    EXPECT_EQ(fix.phone("links/scan", {{"qrPayload", "vorn://link?code=0"}}).status, 404);
    EXPECT_EQ(fix.phone("links/scan", {{"qrPayload", link["qrPayload"]}}).body["linkId"], link["linkId"]);
    EXPECT_EQ(fix.poll(link).body["status"], "scanned");
}

TEST(DeviceLinks, CanBeDeclined)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    fix.phone(pathOf(link) + "/scan");
    EXPECT_EQ(fix.phone(pathOf(link) + "/reject").status, 200);
    EXPECT_EQ(fix.poll(link).body, json({{"status", "rejected"}}));
}

TEST(DeviceLinks, AreConfirmedOnlyAfterTheyWereScanned)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    EXPECT_EQ(fix.phone(pathOf(link) + "/approve", {{"userId", "usr_1"}}).status, 409);
    EXPECT_EQ(fix.phone(pathOf(link) + "/reject").status, 409);
    fix.phone(pathOf(link) + "/scan");
    EXPECT_EQ(fix.phone(pathOf(link) + "/scan").status, 409);
}

TEST(DeviceLinks, ExpireWhenTheirTimeHasPassed)
{
    ServiceOptions options;
    options.settings.linkLifetime = 90s;
    SandboxFixture fix(options);
    const json link = fix.createLink();
    EXPECT_EQ(link["expiresAt"], "2026-03-01T09:16:30Z");
    fix.advance(89999ms);
    EXPECT_EQ(fix.poll(link).body["status"], "pending");
    fix.advance(1ms);
    EXPECT_EQ(fix.poll(link).body["status"], "expired");
    EXPECT_EQ(fix.phone(pathOf(link) + "/scan").status, 409);
}

TEST(DeviceLinks, ApproveThemselvesWhenToldTo)
{
    ServiceOptions options;
    options.settings.autoApprove = true;
    const SandboxFixture fix(options);
    const json link = fix.createLink();
    EXPECT_EQ(fix.poll(link).body["status"], "scanned");
    const json approved = fix.poll(link).body;
    EXPECT_EQ(approved["status"], "approved");
    EXPECT_TRUE(approved.contains("session"));
}

TEST(DeviceLinks, BelongToTheAccountThatConfirms)
{
    ServiceOptions options;
    options.settings.users = {"Sam", "Robin"};
    const SandboxFixture fix(options);
    const json link = fix.createLink();
    fix.phone(pathOf(link) + "/scan");
    EXPECT_EQ(fix.phone(pathOf(link) + "/approve", {{"userId", "usr_3"}}).status, 404);
    fix.phone(pathOf(link) + "/approve", {{"userId", "usr_2"}});
    EXPECT_EQ(fix.poll(link).body["session"]["user"]["displayName"], "Robin");
}

TEST(DeviceLinks, NeverRepeatASecret)
{
    const SandboxFixture fix;
    std::set<std::string> seen;
    for (int i = 0; i < 20; ++i) {
        const json link = fix.createLink();
        for (const char* key : {"linkId", "pollSecret", "qrPayload"}) EXPECT_TRUE(seen.insert(link[key]).second) << key;
    }
}

} // namespace
} // namespace vorn::testing
