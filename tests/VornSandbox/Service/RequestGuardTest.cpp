#include "tests/VornSandbox/Service/RawClient.h"
#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

using Headers = SandboxFixture::Headers;
using nlohmann::json;
using sandbox::Fault;
using sandbox::ServiceOptions;
using ::testing::StartsWith;

TEST(RequestGuard, LetsThePhoneObeyItsOwnPageOnly)
{
    const SandboxFixture fix;
    const json link = fix.createLink();
    const std::string path = "/phone/links/" + link["linkId"].get<std::string>() + "/scan";
    const std::string port = std::to_string(fix.port());
    const auto type = std::pair<const std::string, std::string>("Content-Type", "application/json");
    const struct {
        const char* name;
        Headers headers;
        int status;
    } cases[]{
        {"another site", {type, {"Origin", "http://evil.example"}}, 403},
        {"another port of this computer", {type, {"Origin", "http://127.0.0.1:1"}}, 403},
        {"an unknown origin", {type, {"Origin", "null"}}, 403},
        {"asked for by another site", {type, {"Sec-Fetch-Site", "cross-site"}}, 403},
        {"asked for by another port", {type, {"Sec-Fetch-Site", "same-site"}}, 403},
        {"a form", {{"Content-Type", "text/plain"}}, 403},
        {"no type", {}, 403},
        {"its page", {type, {"Origin", fix.baseURL()}, {"Sec-Fetch-Site", "same-origin"}}, 200},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_EQ(fix.send("POST", path, test.headers, "{}").status, test.status);
    }
    for (const char* page : {"/", "/phone/phone.js", "/phone/submissions/sub_0/messages"}) {
        EXPECT_EQ(fix.send("GET", page, {{"Sec-Fetch-Site", "cross-site"}}).status, 403) << page;
    }
    EXPECT_EQ(fix.send("GET", "/", {{"Sec-Fetch-Site", "none"}}).status, 200); // typed, or opened from elsewhere
}

TEST(RequestGuard, TakesNoOtherNameForThisService)
{
    const SandboxFixture fix;
    const std::string port = std::to_string(fix.port());
    const struct {
        const char* name;
        std::string host;
        bool fine;
    } cases[]{
        {"the address", "127.0.0.1:" + port, true},
        {"the name", "localhost:" + port, true},
        {"a name bound to this computer", "evil.example:" + port, false},
        {"a name that begins alike", "127.0.0.1.evil.example:" + port, false},
        {"a name that ends alike", "evil.localhost:" + port, false},
        {"another port", "127.0.0.1:1", false},
        {"no port", "127.0.0.1", false},
        {"nothing but a port", ":" + port, false},
        {"another address", "127.0.0.2:" + port, false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        for (const char* path : {"/", "/phone/phone.js", "/api/v1/desktop/nimbrel", "/uploads/ast_0/1", "/nothing"}) {
            const Reply reply = fix.send("GET", path, {{"Host", test.host}});
            EXPECT_EQ(reply.body.is_object() && reply.body.value("code", "") == "foreign_page", !test.fine) << path;
        }
    }
    const RawClient nameless(fix.port());
    nameless.send("GET / HTTP/1.0\r\n\r\n");
    EXPECT_THAT(nameless.readToEnd(), StartsWith("HTTP/1.1 403 "));
}

TEST(RequestGuard, LetsNoPageCallTheAPI)
{
    const SandboxFixture fix(smallParts());
    const std::string token = fix.link().token;
    const Upload upload = fix.open(token, "archive");
    const Headers origin{{"Origin", fix.baseURL()}};
    EXPECT_EQ(fix.put(upload.urls.at(1), "archive", origin).status, 403);
    const Headers headers{
        {"Accept", "application/json"}, {"Authorization", "Bearer " + token}, {"Origin", fix.baseURL()}};
    EXPECT_EQ(fix.send("GET", "/api/v1/desktop/nimbrel", headers).status, 403);
    EXPECT_EQ(fix.put(upload.urls.at(1), "archive").status, 200);
}

TEST(RequestGuard, ComesBeforeFaultsCount)
{
    ServiceOptions options;
    options.faults.push_back(Fault::parse("quest=503x1").value());
    const SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const Headers foreign{{"Accept", "application/json"}, {"Origin", "http://evil.example"}};
    EXPECT_EQ(fix.send("GET", "/api/v1/desktop/nimbrel", foreign).status, 403);
    EXPECT_EQ(fix.api("GET", "desktop/nimbrel", {}, token).status, 503);
}

TEST(RequestGuard, LeavesPartURLsToTheService)
{
    const SandboxFixture fix(smallParts());
    const std::string token = fix.link().token;
    const Headers headers{{"Accept", "application/json"},
                          {"Authorization", "Bearer " + token},
                          {"Content-Type", "application/json"},
                          {"Host", "localhost:" + std::to_string(fix.port())}};
    const json request{{"termsVersion", "vorn-mac-nimbrel-1"}, {"sizeBytes", 10}, {"partCount", 1}};
    const Reply reply = fix.send("POST", "/api/v1/desktop/nimbrel/submissions", headers, request.dump());
    EXPECT_THAT(reply.body["assets"][0]["parts"][0]["url"].get<std::string>(), StartsWith(fix.baseURL() + "/uploads/"));
}

} // namespace
} // namespace vorn::testing
