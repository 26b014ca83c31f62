#include "VornMacCore/Client/VornAPI.h"

#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Wire/JSONErrors.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <ostream>

namespace vorn {
namespace {

using testing::Answer;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ServiceFixture;

const std::string token = testing::adasSession().token;

TEST(VornAPI, CreatesADeviceLinkWithoutASession)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(201, testing::deviceLinkJSON));
    EXPECT_EQ(fix.run(fix.api.createDeviceLink({"Zoë's Mac", "macos", "1.0.0", "macOS 14.2.1"})),
              testing::sampleDeviceLink());
    EXPECT_THAT(
        fix.requests(),
        ElementsAre(
            fix.post("auth/device-links")
                .json(
                    R"({"deviceName":"Zoë's Mac","platform":"macos","appVersion":"1.0.0","osVersion":"macOS 14.2.1"})")));
}

TEST(VornAPI, LeavesAnAbsentSystemVersionOut)
{
    ServiceFixture fix(std::nullopt);
    fix.server.answer(Answer::json(200, testing::deviceLinkJSON));
    fix.run(fix.api.createDeviceLink({"Mac", "macos", "1.0.0", std::nullopt}));
    EXPECT_THAT(
        fix.requests(),
        ElementsAre(
            fix.post("auth/device-links").json(R"({"deviceName":"Mac","platform":"macos","appVersion":"1.0.0"})")));
}

TEST(VornAPI, PollsADeviceLinkWithoutASession)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::approvedPollJSON));
    EXPECT_EQ(fix.run(fix.api.pollDeviceLink("link-1", "secret-canary-1")), testing::sampleApprovedPoll());
    EXPECT_THAT(
        fix.requests(),
        ElementsAre(fix.post("auth/device-links/poll").json(R"({"linkId":"link-1","pollSecret":"secret-canary-1"})")));
}

TEST(VornAPI, ReadsAPollWithoutASession)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, R"({"status":"scanned"})"));
    fix.server.answer(Answer::json(200, R"({"status":"something new","session":null})"));
    EXPECT_EQ(fix.run(fix.api.pollDeviceLink("l", "s")), (DeviceLinkPoll{DeviceLinkStatus::scanned, std::nullopt}));
    EXPECT_EQ(fix.run(fix.api.pollDeviceLink("l", "s")), (DeviceLinkPoll{DeviceLinkStatus::expired, std::nullopt}));
}

TEST(VornAPI, AsksForTheQuestsState)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    EXPECT_EQ(fix.run(fix.api.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.get("desktop/nimbrel").bearer(token)));
}

TEST(VornAPI, CreatesASubmission)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(201, testing::submissionUploadJSON));
    const CreateSubmissionRequest request{"terms-1", 5'000'000'000, 597, DeviceSignals{"Europe/Berlin", "de-DE"}};
    EXPECT_EQ(fix.run(fix.api.createSubmission(request)), testing::sampleSubmissionUpload());
    EXPECT_THAT(
        fix.requests(),
        ElementsAre(
            fix.post("desktop/nimbrel/submissions")
                .bearer(token)
                .json(
                    R"({"termsVersion":"terms-1","sizeBytes":5000000000,"partCount":597,"device":{"timezone":"Europe/Berlin","locale":"de-DE"}})")));
}

TEST(VornAPI, LeavesAbsentSignalsOut)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(201, testing::submissionUploadJSON));
    fix.run(fix.api.createSubmission({"terms-1", 1, 1, std::nullopt}));
    EXPECT_THAT(fix.requests(), ElementsAre(fix.post("desktop/nimbrel/submissions")
                                                .bearer(token)
                                                .json(R"({"termsVersion":"terms-1","sizeBytes":1,"partCount":1})")));
}

TEST(VornAPI, AsksForMorePartURLs)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::partUrlsJSON));
    EXPECT_EQ(fix.run(fix.api.partUrls("sub-1", "asset-1", 51, 50)), testing::samplePartUrls());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.post("desktop/nimbrel/submissions/sub-1/assets/asset-1/part-urls")
                                                .bearer(token)
                                                .json(R"({"fromPart":51,"count":50})")));
}

TEST(VornAPI, CompletesAnAsset)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    EXPECT_EQ(fix.run(fix.api.completeAsset("sub-1", "asset-1", {{{1, R"("a/1")"}, {2, "W/b"}}, "00ff"})),
              testing::sampleSubmissionStatus());
    EXPECT_THAT(fix.requests(),
                ElementsAre(fix.post("desktop/nimbrel/submissions/sub-1/assets/asset-1/complete")
                                .bearer(token)
                                .json(R"({"parts":[{"partNumber":1,"etag":"\"a/1\""},{"partNumber":2,"etag":"W/b"}],)"
                                      R"("sha256":"00ff"})")));
}

TEST(VornAPI, AbortsASubmissionAndReadsNoAnswer)
{
    ServiceFixture fix;
    for (const Answer& answer :
         {Answer{.status = 204}, Answer{.status = 200}, Answer{.status = 200, .body = "[no JSON"}}) {
        fix.server.answer(answer);
        EXPECT_EQ(fix.run(fix.api.abortSubmission("sub-1")), IgnoredBody{});
        EXPECT_EQ(fix.requests().back(), fix.post("desktop/nimbrel/submissions/sub-1/abort").bearer(token));
    }
    EXPECT_EQ(fix.requests().size(), 3U);
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(VornAPI, AsksForASubmission)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    EXPECT_EQ(fix.run(fix.api.submission("sub-1")), testing::sampleSubmissionStatus());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.get("desktop/nimbrel/submissions/sub-1").bearer(token)));
}

TEST(VornAPI, ActsForTheSessionItAdopted)
{
    ServiceFixture fix(std::nullopt);
    fix.api.adopt(testing::belasSession());
    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    fix.run(fix.api.nimbrelState());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.get("desktop/nimbrel").bearer(testing::belasSession().token)));
}

struct Identifier {
    const char* what;
    std::string id;
    std::string onTheWire;
};

std::ostream& operator<<(std::ostream& out, const Identifier& identifier)
{
    return out << identifier.what;
}

class IdentifierInAPath : public ::testing::TestWithParam<Identifier> {};

TEST_P(IdentifierInAPath, IsEncodedWhereAPathMustBe)
{
    ServiceFixture fix;
    const auto& [what, id, onTheWire] = GetParam();
    const std::string base = "desktop/nimbrel/submissions/";
    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    fix.run(fix.api.submission(id));
    fix.server.answer({.status = 204});
    fix.run(fix.api.abortSubmission(id));
    fix.server.answer(Answer::json(200, testing::partUrlsJSON));
    fix.run(fix.api.partUrls(id, "x", 1, 1));
    fix.server.answer(Answer::json(200, testing::partUrlsJSON));
    fix.run(fix.api.partUrls("x", id, 1, 1));
    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    fix.run(fix.api.completeAsset("x", id, {}));

    std::vector<std::string> lines;
    for (const auto& request : fix.requests()) lines.push_back(request.line);
    EXPECT_THAT(lines, ElementsAre("GET /api/v1/" + base + onTheWire, "POST /api/v1/" + base + onTheWire + "/abort",
                                   "POST /api/v1/" + base + onTheWire + "/assets/x/part-urls",
                                   "POST /api/v1/" + base + "x/assets/" + onTheWire + "/part-urls",
                                   "POST /api/v1/" + base + "x/assets/" + onTheWire + "/complete"));
}

INSTANTIATE_TEST_SUITE_P(
    VornAPI, IdentifierInAPath,
    ::testing::Values(Identifier{"Plain", "0f8e-A_z.~1", "0f8e-A_z.~1"}, Identifier{"Space", "a b", "a%20b"},
                      Identifier{"Question", "a?b=c", "a%3Fb=c"}, Identifier{"Fragment", "a#b", "a%23b"},
                      Identifier{"Percent", "50%", "50%25"}, Identifier{"EscapeOfItsOwn", "a%2Fb", "a%252Fb"},
                      Identifier{"Slash", "a/b", "a/b"}, Identifier{"DotDot", "..", ".."},
                      Identifier{"DotDotInside", "a/../b", "a/../b"},
                      Identifier{"NonASCII", "zoë☃", "zo%C3%AB%E2%98%83"},
                      Identifier{"LineBreak", "a\r\nb", "a%0D%0Ab"}, Identifier{"NUL", std::string("a\0b", 3), "a%00b"},
                      Identifier{"IllFormed", "a\xFF", "a%FF"},
                      Identifier{"Quotes", R"(a"<>\^`{|}b)", "a%22%3C%3E%5C%5E%60%7B%7C%7Db"},
                      Identifier{"Delimiters", "a!$&'()*+,;=:@b", "a!$&'()*+,;=:@b"}),
    [](const auto& info) { return info.param.what; });

struct Base {
    const char* what;
    const char* path; ///< of the base URL
};

std::ostream& operator<<(std::ostream& out, const Base& base)
{
    return out << base.what;
}

class BaseURL : public ::testing::TestWithParam<Base> {};

TEST_P(BaseURL, LeadsToTheSameRoot)
{
    ServiceFixture fix;
    const VornAPI api({URL::parse(fix.server.url(GetParam().path)).value()}, fix.http, fix.tokens);
    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    fix.run(api.nimbrelState());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.get("desktop/nimbrel").bearer(token)));
}

INSTANTIATE_TEST_SUITE_P(VornAPI, BaseURL,
                         ::testing::Values(Base{"WithoutAPath", ""}, Base{"Slash", "/"}, Base{"Version", "/api/v1"},
                                           Base{"VersionAndSlash", "/api/v1/"}),
                         [](const auto& info) { return info.param.what; });

TEST(VornAPI, SendsNothingForABodyThatCannotBeEncoded)
{
    ServiceFixture fix;
    const std::string broken = "canary\xFF";
    EXPECT_THROW(fix.run(fix.api.createDeviceLink({broken, "macos", "1.0.0", std::nullopt})), UnencodableJSON);
    EXPECT_THROW(fix.run(fix.api.createDeviceLink({"Mac", "macos", "1.0.0", broken})), UnencodableJSON);
    EXPECT_THROW(fix.run(fix.api.pollDeviceLink("link-1", broken)), UnencodableJSON);
    EXPECT_THROW(fix.run(fix.api.createSubmission({broken, 1, 1, std::nullopt})), UnencodableJSON);
    EXPECT_THROW(fix.run(fix.api.createSubmission({"terms-1", 1, 1, DeviceSignals{broken, "de-DE"}})), UnencodableJSON);
    EXPECT_THROW(fix.run(fix.api.completeAsset("s", "a", {{{1, broken}}, "00ff"})), UnencodableJSON);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(VornAPI, SendsNoTokenThatWouldLeaveItsHeader)
{
    for (const std::string& bad :
         {std::string("canary\r\nX-Admin: 1"), std::string("canary\n"), std::string("a\0b", 3)}) {
        StoredSession session = testing::adasSession();
        session.token = bad;
        ServiceFixture fix(session);
        EXPECT_TRUE(testing::errorOf<URLError>(fix.main, fix.api.nimbrelState()));
        EXPECT_EQ(fix.server.connectionCount(), 0U);
    }
}

} // namespace
} // namespace vorn
