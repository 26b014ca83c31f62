#include "tests/VornSandbox/Service/RawClient.h"
#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sandbox::ServiceOptions;

const std::string archive = std::string(1000, 'a') + std::string(1000, 'b') + "c";

Reply partURLs(const SandboxFixture& fix, const std::string& token, const Upload& upload, std::int64_t from,
               std::int64_t count)
{
    return fix.api("POST", "desktop/nimbrel/submissions/" + upload.id + "/assets/" + upload.assetId + "/part-urls",
                   json{{"fromPart", from}, {"count", count}}, token);
}

/// An upload with nothing put yet.
struct OpenUpload {
    explicit OpenUpload(const ServiceOptions& options = smallParts()) : fix(options) {}
    SandboxFixture fix;
    std::string token = fix.link().token;
    Upload upload = fix.open(token, archive);
    std::string first = archive.substr(0, 1000);
};

TEST(PartUpload, AnswersWithAnETagInQuotes)
{
    const OpenUpload test;
    const Reply reply = test.fix.put(test.upload.urls.at(1), test.first);
    EXPECT_EQ(reply.status, 200);
    const std::string tag = reply.headers.at("etag");
    EXPECT_EQ(tag, '"' + hexSHA256(test.first).substr(0, 32) + '"');
}

TEST(PartUpload, RefusesWhatAPartDoesNotHave)
{
    const OpenUpload test;
    const std::string& url = test.upload.urls.at(1);
    EXPECT_EQ(test.fix.put(url, test.first, {{"Authorization", "Bearer " + test.token}}).body["code"],
              "unexpected_authorization");
    EXPECT_EQ(test.fix.put(url, test.first, {{"Content-Type", "application/zip"}}).body["code"],
              "unexpected_content_type");
    EXPECT_EQ(test.fix.put(url, test.first + "x").body["code"], "wrong_part_size");
    EXPECT_EQ(test.fix.put(url, "short").body["code"], "wrong_part_size");
    EXPECT_EQ(test.fix.put(test.upload.urls.at(3), "too long").body["code"], "wrong_part_size");
    const std::string path = url.substr(test.fix.baseURL().size());
    EXPECT_EQ(test.fix.send("PUT", path, {{"Transfer-Encoding", "chunked"}}, "0\r\n\r\n").status, 411);
    EXPECT_EQ(test.fix.send("POST", path, {}, test.first).status, 405);
}

TEST(PartUpload, AcceptsOnlyWhatItSigned)
{
    const OpenUpload test;
    const std::string& url = test.upload.urls.at(1);
    std::string otherPart = url;
    otherPart.replace(otherPart.find("/1?"), 3, "/2?");
    std::string laterExpiry = url;
    laterExpiry.insert(laterExpiry.find("expires=") + 8, "9");
    std::string otherSignature = url;
    otherSignature.back() = otherSignature.back() == '0' ? '1' : '0';
    const struct {
        const char* name;
        std::string url;
    } cases[]{{"the signature of another part", otherPart},
              {"a later expiry", laterExpiry},
              {"another signature", otherSignature},
              {"no query", url.substr(0, url.find('?'))}};
    for (const auto& wrong : cases) {
        SCOPED_TRACE(wrong.name);
        const Reply reply = test.fix.put(wrong.url, test.first);
        EXPECT_EQ(reply.status, 403);
        EXPECT_EQ(reply.body["code"], "bad_signature");
    }
}

TEST(PartUpload, IsRefusedOnceTheURLHasExpired)
{
    ServiceOptions options = smallParts();
    options.settings.urlLifetime = 30s;
    OpenUpload test(options);
    EXPECT_EQ(test.upload.expiresInSeconds, 30);
    test.fix.advance(29999ms);
    EXPECT_EQ(test.fix.put(test.upload.urls.at(1), test.first).status, 200);
    test.fix.advance(1ms);
    EXPECT_EQ(test.fix.put(test.upload.urls.at(1), test.first).body["code"], "expired_url");
    const json fresh = partURLs(test.fix, test.token, test.upload, 1, 1).body;
    EXPECT_EQ(test.fix.put(fresh["parts"][0]["url"], test.first).status, 200);
}

TEST(PartUpload, CanHandOutExpiredURLsFirst)
{
    ServiceOptions options = smallParts();
    options.settings.expiredFirstUrls = true;
    const OpenUpload test(options);
    EXPECT_EQ(test.fix.put(test.upload.urls.at(1), test.first).body["code"], "expired_url");
    const json fresh = partURLs(test.fix, test.token, test.upload, 1, 3).body;
    EXPECT_EQ(test.fix.put(fresh["parts"][0]["url"], test.first).status, 200);
}

TEST(PartUpload, ReplacesAnEarlierPart)
{
    const OpenUpload test;
    test.fix.put(test.upload.urls.at(1), std::string(1000, 'z'));
    const json parts = test.fix.putAll(test.upload, archive);
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).status, 200);
}

TEST(PartUpload, ComeInAnyOrder)
{
    const OpenUpload test;
    json parts(3, nullptr);
    for (const std::int64_t number : {3, 1, 2}) {
        const std::string bytes = archive.substr(static_cast<std::size_t>(number - 1) * 1000, 1000);
        const Reply reply = test.fix.put(test.upload.urls.at(number), bytes);
        parts[static_cast<std::size_t>(number - 1)] = {{"partNumber", number}, {"etag", reply.headers.at("etag")}};
    }
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).status, 200);
}

TEST(PartUpload, CountsOnlyOnceItHasArrivedWhole)
{
    const OpenUpload test;
    const json parts = test.fix.putAll(test.upload, archive);
    const std::string path = test.upload.urls.at(1).substr(test.fix.baseURL().size());
    const RawClient client(test.fix.port());
    client.send(rawRequest(test.fix.port(), "PUT " + path, "Content-Length: 1000\r\n") + "half of it");
    client.finishSending();
    client.readToEnd();
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).body["code"], "bad_etag");
    test.fix.put(test.upload.urls.at(1), test.first);
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).status, 200);
}

TEST(PartUpload, TakesAnEmptyArchiveAsOneEmptyPart)
{
    const SandboxFixture fix;
    const std::string token = fix.link().token;
    EXPECT_EQ(fix.submission(token, fix.submit(token, "")).status, 200);
}

TEST(PartURLs, ComeInWindows)
{
    ServiceOptions options = smallParts();
    options.settings.initialParts = 2;
    const OpenUpload test(options);
    EXPECT_EQ(test.upload.urls.size(), 2U);
    const Reply reply = partURLs(test.fix, test.token, test.upload, 2, 2);
    EXPECT_EQ(reply.body["submissionId"], test.upload.id);
    EXPECT_EQ(reply.body["assetId"], test.upload.assetId);
    EXPECT_EQ(reply.body["expiresInSeconds"], 900);
    EXPECT_EQ(reply.body["parts"].size(), 2U);
    EXPECT_EQ(reply.body["parts"][1]["partNumber"], 3);
}

TEST(PartURLs, AreGivenForPartsThatExist)
{
    const OpenUpload test;
    const struct {
        const char* name;
        std::int64_t from;
        std::int64_t count;
        int status;
    } cases[]{{"all", 1, 3, 200},
              {"the last", 3, 1, 200},
              {"none", 1, 0, 422},
              {"before the first", 0, 1, 422},
              {"after the last", 4, 1, 422},
              {"beyond the last", 2, 3, 422},
              {"a window too large", 1, 51, 422},
              {"an overflow", 2, INT64_MAX, 422}};
    for (const auto& window : cases) {
        SCOPED_TRACE(window.name);
        EXPECT_EQ(partURLs(test.fix, test.token, test.upload, window.from, window.count).status, window.status);
    }
    Upload other = test.upload;
    other.assetId = "ast_0";
    EXPECT_EQ(partURLs(test.fix, test.token, other, 1, 1).body["code"], "unknown_asset");
}

TEST(Completion, ChecksTheListOfParts)
{
    const OpenUpload test;
    const json parts = test.fix.putAll(test.upload, archive);
    json reversed = parts;
    std::ranges::reverse(reversed);
    json twice = parts;
    twice[2] = twice[1];
    json short_ = parts;
    short_.erase(2);
    json otherTag = parts;
    otherTag[0]["etag"] = "\"00000000000000000000000000000000\"";
    json bareTag = parts;
    const std::string tag = parts[0]["etag"];
    bareTag[0]["etag"] = tag.substr(1, tag.size() - 2);
    const struct {
        const char* name;
        json parts;
        const char* code;
    } cases[]{{"another order", reversed, "bad_parts"},
              {"a part twice", twice, "bad_parts"},
              {"a part too few", short_, "bad_parts"},
              {"another ETag", otherTag, "bad_etag"},
              {"an ETag without its quotes", bareTag, "bad_etag"}};
    for (const auto& list : cases) {
        SCOPED_TRACE(list.name);
        const Reply reply = test.fix.complete(test.token, test.upload, list.parts, archive);
        EXPECT_EQ(reply.status, 422);
        EXPECT_EQ(reply.body["code"], list.code);
    }
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).status, 200); // none of the cases did harm
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).status, 409);
}

TEST(Completion, ChecksTheHash)
{
    const OpenUpload test;
    const json parts = test.fix.putAll(test.upload, archive);
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, "another archive").body["code"], "wrong_sha256");
    const std::string path =
        "desktop/nimbrel/submissions/" + test.upload.id + "/assets/" + test.upload.assetId + "/complete";
    std::string upper = hexSHA256(archive);
    std::ranges::transform(upper, upper.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(test.fix.api("POST", path, json{{"parts", parts}, {"sha256", upper}}, test.token).body["code"],
              "bad_sha256");
    EXPECT_EQ(test.fix.complete(test.token, test.upload, parts, archive).body["status"], "analyzing");
}

} // namespace
} // namespace vorn::testing
