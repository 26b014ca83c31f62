#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

using Headers = SandboxFixture::Headers;
using nlohmann::json;
using ::testing::Contains;
using ::testing::HasSubstr;

const std::string fullLink = R"({"deviceName":"Mac","platform":"macos","appVersion":"1.0.0","osVersion":"macOS 14.5"})";
const Headers jsonHeaders{{"Accept", "application/json"}, {"Content-Type", "application/json"}};

TEST(RequestFrame, NamesWhatIsWrongWithABody)
{
    const SandboxFixture fix;
    const struct {
        const char* name;
        std::string body;
        int status;
        const char* message;
    } cases[]{
        {"complete", fullLink, 201, ""},
        {"without the optional key", R"({"deviceName":"Mac","platform":"macos","appVersion":"1"})", 201, ""},
        {"no JSON", "{", 400, "The body is not JSON, or nested deeper than 64."},
        {"an array", "[]", 400, "The body is not a JSON object where one is expected."},
        {"a key too few", R"({"platform":"macos","appVersion":"1"})", 400, "deviceName is missing."},
        {"a key too many", R"({"deviceName":"Mac","platform":"macos","appVersion":"1","x":1})", 400, "Unknown key x."},
        {"a number for a text", R"({"deviceName":1,"platform":"macos","appVersion":"1"})", 400,
         "deviceName is not a string."},
        {"null for an optional key", R"({"deviceName":"Mac","platform":"macos","appVersion":"1","osVersion":null})",
         400, "osVersion is null: leave it out instead."},
        {"another platform", R"({"deviceName":"Mac","platform":"MacOS","appVersion":"1"})", 422,
         "platform is not macos."},
        {"an empty name", R"({"deviceName":"","platform":"macos","appVersion":"1"})", 422, "deviceName is empty."},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        const Reply reply = fix.send("POST", "/api/v1/auth/device-links", jsonHeaders, test.body);
        EXPECT_EQ(reply.status, test.status);
        if (test.status != 201) EXPECT_EQ(reply.body["message"], test.message);
    }
}

TEST(RequestFrame, NamesWhatIsWrongWithHeaders)
{
    const SandboxFixture fix;
    const std::string token = "Bearer " + fix.link().token;
    const struct {
        const char* name;
        const char* method;
        const char* path;
        Headers headers;
        std::optional<std::string> body;
        int status;
        const char* code;
    } cases[]{
        {"accepts anything",
         "POST",
         "auth/device-links",
         {{"Accept", "*/*"}, {"Content-Type", "application/json"}},
         fullLink,
         406,
         "bad_accept"},
        {"body without a type",
         "POST",
         "auth/device-links",
         {{"Accept", "application/json"}},
         fullLink,
         415,
         "bad_content_type"},
        {"body of another type",
         "POST",
         "auth/device-links",
         {{"Accept", "application/json"}, {"Content-Type", "text/plain"}},
         fullLink,
         415,
         "bad_content_type"},
        {"no body", "POST", "auth/device-links", jsonHeaders, {}, 400, "missing_body"},
        {"token while linking",
         "POST",
         "auth/device-links",
         {{"Accept", "application/json"}, {"Content-Type", "application/json"}, {"Authorization", token}},
         fullLink,
         400,
         "unexpected_authorization"},
        {"token with a refresh",
         "POST",
         "auth/desktop/refresh",
         {{"Accept", "application/json"}, {"Content-Type", "application/json"}, {"Authorization", token}},
         "{}",
         400,
         "unexpected_authorization"},
        {"type without a body",
         "GET",
         "desktop/nimbrel",
         {{"Accept", "application/json"}, {"Content-Type", "application/json"}, {"Authorization", token}},
         {},
         400,
         "unexpected_content_type"},
        {"body where none is taken",
         "POST",
         "auth/desktop/logout",
         {{"Accept", "application/json"}, {"Authorization", token}},
         "{}",
         400,
         "unexpected_body"},
        {"another scheme",
         "GET",
         "desktop/nimbrel",
         {{"Accept", "application/json"}, {"Authorization", "Basic abc"}},
         {},
         401,
         "missing_token"},
        {"unknown path", "GET", "desktop/other", {{"Accept", "application/json"}}, {}, 404, "unknown_path"},
        {"wrong method", "GET", "auth/device-links", {{"Accept", "application/json"}}, {}, 405, "wrong_method"},
        {"another wrong method",
         "DELETE",
         "desktop/nimbrel",
         {{"Accept", "application/json"}},
         {},
         405,
         "wrong_method"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        const Reply reply = fix.send(test.method, std::string("/api/v1/") + test.path, test.headers, test.body);
        EXPECT_EQ(reply.status, test.status);
        EXPECT_EQ(reply.body.value("code", ""), test.code) << reply.text;
    }
}

TEST(RequestFrame, RefusesABodyThatIsNestedTooDeeply)
{
    const SandboxFixture fix;
    const std::string deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
    const std::string token = fix.link().token;
    const Upload upload = fix.open(token, "archive");
    Headers headers = jsonHeaders;
    headers["Authorization"] = "Bearer " + token;
    const Reply reply =
        fix.send("POST", "/api/v1/desktop/nimbrel/submissions/" + upload.id + "/assets/" + upload.assetId + "/complete",
                 headers, R"({"parts":[)" + deep + R"(],"sha256":""})");
    EXPECT_EQ(reply.status, 400);
    EXPECT_EQ(reply.body["code"], "malformed_request");
}

TEST(RequestFrame, RefusesABodyThatIsTooLarge)
{
    const SandboxFixture fix;
    const Reply reply =
        fix.send("POST", "/api/v1/auth/device-links", jsonHeaders, std::string(100'000, ' ') + fullLink);
    EXPECT_EQ(reply.status, 413);
    EXPECT_EQ(reply.body["code"], "too_large");
}

TEST(RequestFrame, WarnsAboutHeadersThatNobodyNeeds)
{
    const SandboxFixture fix;
    Headers headers = jsonHeaders;
    headers["X-Client"] = "secret value";
    fix.send("POST", "/api/v1/auth/device-links", headers, fullLink);
    EXPECT_THAT(fix.log(), Contains("warning: POST /api/v1/auth/device-links has the header x-client"));
}

TEST(RequestFrame, LogsNoSecret)
{
    const SandboxFixture fix(smallParts());
    const json link = fix.createLink();
    const std::string path = "links/" + link["linkId"].get<std::string>();
    fix.phone("links/scan", {{"qrPayload", link["qrPayload"]}});
    fix.phone(path + "/approve", {{"userId", "usr_1"}});
    const json session = fix.poll(link).body["session"];
    const std::string archive = "CANARY text of a message";
    const Upload upload = fix.open(session["token"], archive);
    fix.complete(session["token"], upload, fix.putAll(upload, archive), archive);
    fix.api("POST", "auth/desktop/refresh", json{{"refreshToken", session["refreshToken"]}});
    const std::string url = upload.urls.at(1);
    const std::vector<std::string> secrets{
        link["pollSecret"],        link["qrPayload"],          session["token"], session["refreshToken"],
        url.substr(url.find('?')), url.substr(url.rfind('=')), "CANARY",         "+15550102030"};
    ASSERT_GE(fix.log().size(), 8U);
    for (const std::string& secret : secrets) EXPECT_THAT(fix.log(), Not(Contains(HasSubstr(secret)))) << secret;
    EXPECT_THAT(fix.log(), Contains(HasSubstr("PUT /uploads/" + upload.assetId + "/1 200 24>0 bytes")));
}

} // namespace
} // namespace vorn::testing
