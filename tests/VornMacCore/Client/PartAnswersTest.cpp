#include "VornMacCore/Wire/WireJSON.h"
#include "tests/VornMacCore/Client/UploadFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using namespace testing;
using ::testing::ElementsAre;
using PartRefused = UploadError::PartRefused;
using MissingETag = UploadError::MissingETag;

TEST(PartAnswers, OfTheTwoHundredsTakeThePart)
{
    for (const int status : {200, 201, 202, 204, 206, 299}) {
        SCOPED_TRACE(status);
        UploadFixture fix("abc");
        fix.opens(fix.urlsOf(1, 1));
        fix.answersPart(status, {{"ETag", "\"tag\""}});
        fix.completes();
        fix.upload();
        EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), completing));
    }
}

TEST(PartAnswers, OfAnyOtherStatusEndTheUploadAtOnce)
{
    for (const int status : {300, 301, 302, 303, 304, 307, 308, 400, 401, 402, 404, 409, 412, 429, 500, 503, 599}) {
        SCOPED_TRACE(status);
        UploadFixture fix("abcd", 2);
        fix.opens(fix.urlsOf(1, 2));
        fix.takesPart();
        fix.answersPart(status, {{"ETag", "\"tag\""}, {"Location", fix.urlOf(9)}});
        fix.aborts();
        EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(PartRefused{2, status}));
        EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), putting(2), aborting));
    }
}

/// Answers every part with `status`, which a real server could not: statuses below 200 are interim answers.
class PartsAnswered final : public HTTPSession {
public:
    PartsAnswered(std::shared_ptr<HTTPSession> next, int status) : next_(std::move(next)), status_(status) {}

    Async<HTTPResponse> send(HTTPRequest request) override
    {
        if (request.method == HTTPRequest::Method::put) return give({status_, {{"ETag", "\"tag\""}}, ""});
        return next_->send(std::move(request));
    }

private:
    static Async<HTTPResponse> give(HTTPResponse response) { co_return response; }

    std::shared_ptr<HTTPSession> next_;
    int status_;
};

TEST(PartAnswers, BelowTwoHundredEndTheUpload)
{
    for (const int status : {0, 100, 199}) {
        SCOPED_TRACE(status);
        UploadFixture fix("abc");
        fix.session = std::make_shared<PartsAnswered>(fix.session, status);
        fix.opens(fix.urlsOf(1, 1));
        fix.aborts();
        EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(PartRefused{1, status}));
        EXPECT_THAT(fix.requests(), ElementsAre(opening, aborting));
    }
}

TEST(PartAnswers, MayHaveInterimOnesBeforeThem)
{
    for (const char* before : {"HTTP/1.1 100 Continue\r\n\r\n", "HTTP/1.1 103 Early Hints\r\nETag: \"early\"\r\n\r\n",
                               "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 102 Processing\r\n\r\n"}) {
        SCOPED_TRACE(before);
        UploadFixture fix("abc");
        fix.opens(fix.urlsOf(1, 1));
        fix.server.answer({.status = 200, .headers = {{"ETag", "\"late\""}}, .sentBefore = before});
        fix.completes();
        fix.upload();
        EXPECT_EQ(fix.bodyOf(2)["parts"][0]["etag"], "\"late\"");
    }
}

TEST(PartAnswers, AreRepeatedToTheServiceWithTheirTagAsReceived)
{
    struct Case {
        const char* name;
        const char* header;
        const char* received;
        const char* sent;
    };
    constexpr std::array cases{
        Case{"quoted", "ETag", "\"0123456789abcdef\"", "\"0123456789abcdef\""},
        Case{"bare", "ETag", "0123456789abcdef", "0123456789abcdef"},
        Case{"weak", "ETag", "W/\"abc\"", "W/\"abc\""},
        Case{"empty quotes", "ETag", "\"\"", "\"\""},
        Case{"of several parts", "ETag", "\"abc-12\"", "\"abc-12\""},
        Case{"with white space within", "ETag", "\"a b\tc\"", "\"a b\tc\""},
        Case{"with a backslash and a comma", "ETag", "\"a\\b\",c", "\"a\\b\",c"},
        Case{"beyond ASCII", "ETag", "\"\xC3\xA9\"", "\"\xC3\xA9\""},
        Case{"a name in lower case", "etag", "\"abc\"", "\"abc\""},
        Case{"a name in mixed case", "eTaG", "\"abc\"", "\"abc\""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        UploadFixture fix("abc");
        fix.opens(fix.urlsOf(1, 1));
        fix.answersPart(200, {{each.header, each.received}});
        fix.completes();
        fix.upload();
        EXPECT_EQ(fix.bodyOf(2)["parts"][0]["etag"], each.sent);
    }
}

TEST(PartAnswers, WithoutATagAreNoAcknowledgement)
{
    struct Case {
        const char* name;
        Answer answer;
    };
    const std::vector<Case> cases{
        {"none", {}},
        {"an empty one", {.headers = {{"ETag", ""}}}},
        {"only white space", {.headers = {{"ETag", "  \t "}}}},
        {"a status without a body", {.status = 204}},
        {"one before the answer", {.sentBefore = "HTTP/1.1 103 Early Hints\r\nETag: \"early\"\r\n\r\n"}},
        {"a header with a longer name", {.headers = {{"X-ETag", "\"abc\""}}}},
        {"one in the body", {.body = "ETag: \"abc\""}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        UploadFixture fix("abcd", 2);
        fix.opens(fix.urlsOf(1, 2));
        fix.takesPart();
        fix.server.answer(each.answer);
        fix.aborts();
        EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(MissingETag{2}));
        EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), putting(2), aborting));
    }
}

TEST(PartAnswers, WithATagThatIsNoTextCannotBeRepeated)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart("\"\xFF\"");
    fix.aborts();
    fix.uploadFails<UnencodableJSON>();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

} // namespace
} // namespace vorn
