#include "Platform/HTTP/URLError.h"
#include "tests/VornMacCore/Client/UploadFixture.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Fixture = UploadFixture;

/// The text of the error with which the upload ends.
std::string failureOf(Fixture& fix)
{
    try {
        fix.upload();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none: it succeeded";
}

struct Failure {
    const char* name;
    std::function<void(Fixture&)> prepare; ///< all answers except that to the abort
    std::string error;
    std::vector<std::string> requests; ///< between the opening and the abort
};

const std::string refused = "part 1 refused with 500";
const std::string unreadable = "unreadable answer";

void resets(Exchange& exchange)
{
    exchange.readWholeBody();
    exchange.reset();
}

void answersNoHTTP(Exchange& exchange)
{
    exchange.readWholeBody();
    exchange.send("SSH-2.0-server\r\n\r\n");
    exchange.close();
}

void takesThePart(Fixture& fix)
{
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
}

std::vector<Failure> failures()
{
    const std::string lost = URLError(URLError::Code::networkConnectionLost).what();
    return {
        {"the storage refuses the part",
         [](Fixture& fix) {
             fix.opens(fix.urlsOf(1, 1));
             fix.answersPart(500);
         },
         refused,
         {putting(1)}},
        {"the storage hangs up",
         [](Fixture& fix) {
             fix.opens(fix.urlsOf(1, 1));
             fix.server.script(resets);
         },
         lost,
         {putting(1)}},
        {"the storage speaks no HTTP",
         [](Fixture& fix) {
             fix.opens(fix.urlsOf(1, 1));
             fix.server.script(answersNoHTTP);
         },
         unreadable,
         {putting(1)}},
        {"the storage gives no tag",
         [](Fixture& fix) {
             fix.opens(fix.urlsOf(1, 1));
             fix.answersPart(200);
         },
         "part 1 without an ETag",
         {putting(1)}},
        {"the service refuses URLs",
         [](Fixture& fix) {
             fix.opens({});
             fix.server.answer(Answer::json(409, R"({"message":"The submission has ended.","code":"ended"})"));
         },
         "HTTP 409: The submission has ended.",
         {askingForURLs}},
        {"the service has no URLs to give",
         [](Fixture& fix) {
             fix.opens({});
             fix.givesURLs(1, {});
         },
         "part 1 refused with 0",
         {askingForURLs}},
        {"the service's URLs cannot be read",
         [](Fixture& fix) {
             fix.opens({});
             fix.server.answer(Answer::json(200, "{}"));
         },
         unreadable,
         {askingForURLs}},
        {"the service hangs up on the question for URLs",
         [](Fixture& fix) {
             fix.opens({});
             fix.server.script(resets);
         },
         lost,
         {askingForURLs}},
        {"the service refuses URLs after a forbidden part",
         [](Fixture& fix) {
             fix.opens(fix.urlsOf(1, 1));
             fix.answersPart(403);
             fix.server.answer({.status = 503});
         },
         "HTTP 503",
         {putting(1), askingForURLs}},
        {"the service does not complete",
         [](Fixture& fix) {
             takesThePart(fix);
             fix.server.answer(Answer::json(422, R"({"message":"The archive is damaged."})"));
         },
         "HTTP 422: The archive is damaged.",
         {putting(1), completing}},
        {"the service has switched the export off",
         [](Fixture& fix) {
             takesThePart(fix);
             fix.server.answer(Answer::json(404, R"({"message":"No route."})"));
         },
         "HTTP 404: No route.",
         {putting(1), completing}},
        {"the service's status cannot be read",
         [](Fixture& fix) {
             takesThePart(fix);
             fix.server.answer(Answer::json(200, R"({"id":"s1"})"));
         },
         unreadable,
         {putting(1), completing}},
        {"the service hangs up on the completion",
         [](Fixture& fix) {
             takesThePart(fix);
             fix.server.script(resets);
         },
         lost,
         {putting(1), completing}},
    };
}

std::vector<std::string> withOpeningAndAbort(const Failure& failure)
{
    std::vector<std::string> all{opening};
    all.insert(all.end(), failure.requests.begin(), failure.requests.end());
    all.push_back(aborting);
    return all;
}

TEST(UploadAbort, IsSentOnceAfterAnyFailureOfAnOpenSubmission)
{
    for (const Failure& failure : failures()) {
        SCOPED_TRACE(failure.name);
        Fixture fix("abc");
        failure.prepare(fix);
        fix.aborts();
        EXPECT_EQ(failureOf(fix), failure.error);
        EXPECT_EQ(fix.requests(), withOpeningAndAbort(failure));
    }
}

TEST(UploadAbort, ThatFailsIsLoggedAndChangesNothing)
{
    for (const Failure& failure : failures()) {
        SCOPED_TRACE(failure.name);
        const CapturedLog log;
        Fixture fix("abc");
        failure.prepare(fix);
        fix.server.answer({.status = 500});
        EXPECT_EQ(failureOf(fix), failure.error);
        EXPECT_EQ(fix.requests(), withOpeningAndAbort(failure));
        ASSERT_FALSE(log.lines().empty());
        EXPECT_EQ(log.lines().back(), "[upload] abort after a failed upload failed: HTTP 500");
    }
}

TEST(UploadAbort, LogsWhyItFailed)
{
    struct Case {
        const char* name;
        LoopbackServer::Handler abort;
        std::string reason;
    };
    const auto answers = [](Answer answer) { return [answer](Exchange& exchange) { exchange.answer(answer); }; };
    const std::vector<Case> cases{
        {"the service's words", answers(Answer::json(409, R"({"message":"It is over."})")), "HTTP 409: It is over."},
        {"switched off", answers({.status = 404}), "HTTP 404"},
        {"the connection", resets, URLError(URLError::Code::networkConnectionLost).what()},
        {"no HTTP", answersNoHTTP, unreadable},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const CapturedLog log;
        Fixture fix("abc");
        fix.opens(fix.urlsOf(1, 1));
        fix.answersPart(500);
        fix.server.script(each.abort);
        EXPECT_STREQ(fix.uploadFails<UploadError>().what(), refused.c_str());
        EXPECT_THAT(log.lines(), ElementsAre("[upload] abort after a failed upload failed: " + each.reason));
    }
}

TEST(UploadAbort, IsSignedAndHasNoBody)
{
    Fixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(500);
    fix.aborts();
    fix.uploadFails<UploadError>();
    const ReceivedRequest abort = fix.server.requests().at(2);
    EXPECT_THAT(headersOf(abort),
                ElementsAre("Accept: application/json", "Authorization: Bearer canary-token", "Content-Length: 0",
                            "Host: 127.0.0.1:" + std::to_string(fix.server.port())));
}

TEST(UploadAbort, IsQuietWhenItSucceeds)
{
    const CapturedLog log;
    Fixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(500);
    fix.server.answer({.status = 204});
    fix.uploadFails<UploadError>();
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(UploadAbort, IsNotSentForASubmissionWithoutAnAsset)
{
    const CapturedLog log;
    Fixture fix("abc");
    fix.server.answer(
        Answer::json(201, R"({"submissionId":"s1","questId":"q1","attempt":1,"assets":[],"expiresInSeconds":3600})"));
    EXPECT_STREQ(fix.uploadFails<UploadError>().what(), "submission without an asset");
    EXPECT_THAT(fix.requests(), ElementsAre(opening));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(UploadAbort, IsNotSentWhenNoSubmissionWasOpened)
{
    struct Case {
        const char* name;
        LoopbackServer::Handler create;
        std::string error;
    };
    const auto answers = [](Answer answer) {
        return [answer](Exchange& exchange) {
            exchange.readWholeBody();
            exchange.answer(answer);
        };
    };
    const std::vector<Case> cases{
        {"refused", answers(Answer::json(409, R"({"message":"One is in review."})")), "HTTP 409: One is in review."},
        {"switched off", answers({.status = 404}), "HTTP 404"},
        {"unreadable", answers(Answer::json(201, "{}")), unreadable},
        {"cut off", resets, URLError(URLError::Code::networkConnectionLost).what()},
        {"no HTTP", answersNoHTTP, unreadable},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Fixture fix("abc");
        fix.server.script(each.create);
        EXPECT_EQ(failureOf(fix), each.error);
        EXPECT_THAT(fix.requests(), ElementsAre(opening));
    }
}

} // namespace
} // namespace vorn
