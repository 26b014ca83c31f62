#include "tests/VornMacCore/Client/RecordingSession.h"
#include "tests/VornMacCore/Client/UploadFixture.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using namespace testing;
using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Three parts: "aaaa", "bbbb", "cc".
struct ThreeParts : UploadFixture {
    ThreeParts() : UploadFixture("aaaabbbbcc", 4)
    {
        opens(urlsOf(1, 3));
        for (const char* tag : {"\"one\"", "\"two\"", "\"three\""}) takesPart(tag);
        completes();
    }
    std::string host() const { return "Host: 127.0.0.1:" + std::to_string(server.port()); }
};

TEST(Upload, OpensASubmissionSendsThePartsAndCompletesTheAsset)
{
    const CapturedLog log;
    ThreeParts fix;
    const SubmissionStatus status = fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), putting(2), putting(3), completing));
    EXPECT_EQ(status.id, "s1");
    EXPECT_EQ(status.status, "processing");
    EXPECT_EQ(status.assetsRemaining, 0);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(Upload, SendsOneRequestAtATimeOnOneConnection)
{
    ThreeParts fix;
    fix.upload();
    EXPECT_EQ(fix.server.mostRequestsAtOnce(), 1U);
    EXPECT_EQ(fix.server.connectionCount(), 1U);
}

TEST(Upload, SendsThePartsBytes)
{
    ThreeParts fix;
    fix.upload();
    const auto requests = fix.server.requests();
    EXPECT_EQ(requests.at(1).body, "aaaa");
    EXPECT_EQ(requests.at(2).body, "bbbb");
    EXPECT_EQ(requests.at(3).body, "cc");
}

TEST(Upload, SendsAPartWithoutAnyHeaderOfItsOwn)
{
    ThreeParts fix;
    fix.upload();
    const auto requests = fix.server.requests();
    EXPECT_THAT(headersOf(requests.at(1)), ElementsAre("Content-Length: 4", fix.host()));
    EXPECT_THAT(headersOf(requests.at(3)), ElementsAre("Content-Length: 2", fix.host()));
}

TEST(Upload, SignsTheServicesRequests)
{
    ThreeParts fix;
    fix.upload();
    const auto requests = fix.server.requests();
    for (const std::size_t index : {0U, 4U}) {
        EXPECT_THAT(headersOf(requests.at(index)),
                    ElementsAre("Accept: application/json", "Authorization: Bearer canary-token",
                                "Content-Length: " + std::to_string(requests.at(index).body.size()),
                                "Content-Type: application/json", fix.host()));
    }
}

TEST(Upload, TellsTheServiceTermsSizeAndDevice)
{
    ThreeParts fix;
    fix.upload();
    EXPECT_EQ(fix.bodyOf(0), json::parse(R"({"termsVersion":"2026-01","sizeBytes":10,"partCount":3,
                                             "device":{"timezone":"Europe/Berlin","locale":"de-DE"}})"));
}

TEST(Upload, LeavesOutADeviceThatIsNotGiven)
{
    ThreeParts fix;
    fix.device.reset();
    fix.upload();
    EXPECT_EQ(fix.bodyOf(0), json::parse(R"({"termsVersion":"2026-01","sizeBytes":10,"partCount":3})"));
}

TEST(Upload, CompletesWithTheTagsInOrderAndTheFilesHash)
{
    ThreeParts fix;
    fix.upload();
    const json tags = json::parse(R"([{"partNumber":1,"etag":"\"one\""},{"partNumber":2,"etag":"\"two\""},
                                      {"partNumber":3,"etag":"\"three\""}])");
    const json hash = "e5b23841c6af4520d056e6428103d28178e586ff65111e80167d43736ade2f72";
    EXPECT_EQ(fix.bodyOf(4).size(), 2U);
    EXPECT_EQ(fix.bodyOf(4)["parts"], tags);
    EXPECT_EQ(fix.bodyOf(4)["sha256"], hash);
}

TEST(Upload, TakesTheFirstOfSeveralAssets)
{
    UploadFixture fix("abc");
    json answer = json::parse(submissionAnswer({fix.urlOf(1)}).body);
    json second = answer["assets"][0];
    second["assetId"] = "a2";
    second["parts"][0]["url"] = fix.urlOf(7);
    answer["assets"].push_back(second);
    fix.server.answer(Answer::json(201, answer.dump()));
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), completing));
}

TEST(Upload, SendsTheURLsPathAndQueryExactlyAsGiven)
{
    struct Case {
        const char* name;
        const char* given;
        const char* sent;
    };
    constexpr std::array cases{
        Case{"plain", "/part", "/part"},
        Case{"a query", "/part?a=b&c=d", "/part?a=b&c=d"},
        Case{"escapes", "/a%2Fb%2fc%20d?X-Sig=a%2Bb+c%3D%3d", "/a%2Fb%2fc%20d?X-Sig=a%2Bb+c%3D%3d"},
        Case{"dots and slashes", "/a/../b/./c//d/", "/a/../b/./c//d/"},
        Case{"escaped dots", "/%2e%2E/x", "/%2e%2E/x"},
        Case{"an empty query", "/part?", "/part?"},
        Case{"a query with marks", "/part?a=?/:@!$&'()*,;=~", "/part?a=?/:@!$&'()*,;=~"},
        Case{"no path", "?signature=canary", "/?signature=canary"},
        Case{"a fragment, which stays here", "/part?a=b#canary", "/part?a=b"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        UploadFixture fix("abc");
        fix.opens({fix.server.url(each.given)});
        fix.takesPart();
        fix.completes();
        fix.upload();
        EXPECT_THAT(fix.requests(), ElementsAre(opening, std::string("PUT ") + each.sent, completing));
    }
}

TEST(Upload, GivesAPartTwoMinutesOfSilenceAndTheServiceHalfOfOne)
{
    ThreeParts fix;
    const auto recorded = std::make_shared<RecordingSession>(fix.session);
    fix.session = recorded;
    fix.api.emplace(APIConfiguration{URL::parse(fix.server.url()).value()}, recorded, fix.store);
    fix.upload();
    std::vector<std::chrono::milliseconds> limits;
    for (const HTTPRequest& request : recorded->sent()) limits.push_back(request.inactivityLimit);
    EXPECT_THAT(limits, ElementsAre(30s, 120s, 120s, 120s, 30s));
}

} // namespace
} // namespace vorn
