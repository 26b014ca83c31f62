#include "tests/support/service/ServiceAnswers.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace vorn {
namespace {

using namespace std::chrono_literals;

using testing::Answer;
using ::testing::ElementsAre;
using testing::Exchange;
using testing::HeldHTTPSession;
using testing::httpError;
using ::testing::IsEmpty;
using testing::ServiceFixture;
using testing::Started;

const APIError invalid(APIError::InvalidResponse{});

TEST(ServiceAnswer, MayComeAfterAnInformationalOne)
{
    ServiceFixture fix;
    Answer answer = Answer::json(200, testing::nimbrelStateJSON);
    answer.sentBefore = "HTTP/1.1 103 Early Hints\r\nLink: </style.css>\r\n\r\n";
    fix.server.answer(answer);
    EXPECT_EQ(fix.run(fix.api.nimbrelState()), testing::sampleNimbrelState());
}

TEST(ServiceAnswer, ThatPointsElsewhereIsNotFollowed)
{
    ServiceFixture fix;
    for (const int status : {301, 302, 303, 307, 308}) {
        fix.server.answer({.status = status, .headers = {{"Location", fix.server.url("/elsewhere")}}});
        EXPECT_EQ(fix.apiError(fix.api.nimbrelState()), httpError(status));
        fix.server.answer({.status = status, .headers = {{"Location", fix.server.url("/elsewhere")}}});
        EXPECT_EQ(fix.apiError(fix.api.createSubmission({"terms-1", 1, 1, std::nullopt})), httpError(status));
    }
    EXPECT_EQ(fix.requests().size(), 10U);
}

TEST(ServiceAnswer, Of401EndsAnUnauthenticatedCallWithoutARefresh)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(401, testing::errorJSON("No such link.", "gone")));
    fix.server.answer({.status = 401});
    EXPECT_EQ(fix.apiError(fix.api.createDeviceLink({"Mac", "macos", "1.0.0", std::nullopt})),
              APIError(APIError::SessionExpired{}));
    EXPECT_EQ(fix.apiError(fix.api.pollDeviceLink("link-1", "secret-canary-1")), APIError(APIError::SessionExpired{}));
    EXPECT_EQ(fix.requests().size(), 2U);
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
}

TEST(ServiceAnswer, KeepsTheServicesWords)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(429, testing::errorJSON("Too many tries.", "rate_limited")));
    EXPECT_EQ(fix.apiError(fix.api.nimbrelState()), httpError(429, "Too many tries.", "rate_limited"));
    EXPECT_EQ(fix.requests().size(), 1U);
}

TEST(ServiceAnswer, WithoutTheRecordIsLoggedByTheRecordsName)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, R"({"linkId":"canary"})"));
    EXPECT_EQ(fix.apiError(fix.api.createDeviceLink({"Mac", "macos", "1.0.0", std::nullopt})), invalid);
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] undecodable DeviceLink answer"));
}

TEST(ServiceAnswer, WithoutABodyIsUndecodableWhereARecordIsWanted)
{
    ServiceFixture fix;
    fix.server.answer({.status = 204});
    EXPECT_EQ(fix.apiError(fix.api.nimbrelState()), invalid);
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] undecodable NimbrelState answer"));
}

TEST(ServiceAnswer, ThatIsNestedTooDeeplyIsUndecodable)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, R"({"x":)" + std::string(100000, '[') + std::string(100000, ']') + "}"));
    EXPECT_EQ(fix.apiError(fix.api.submission("sub-1")), invalid);
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] undecodable SubmissionStatus answer"));
}

TEST(ServiceAnswer, ThatIsTooLargeIsInvalid)
{
    ServiceFixture fix;
    fix.server.script([](Exchange& exchange) { exchange.answer(Answer::json(200, std::string((16 << 20) + 1, ' '))); });
    EXPECT_EQ(fix.apiError(fix.api.nimbrelState()), invalid);
    EXPECT_EQ(fix.requests().size(), 1U);
}

TEST(ServiceAnswer, ThatIsNoHTTPIsInvalid)
{
    ServiceFixture fix;
    for (const char* bytes : {"220 mail.example.com ESMTP\r\n", "{\"quest\":{}}\r\n\r\n"}) {
        fix.server.script([bytes](Exchange& exchange) {
            exchange.send(bytes);
            exchange.close();
        });
        EXPECT_EQ(fix.apiError(fix.api.nimbrelState()), invalid);
    }
    EXPECT_EQ(fix.requests().size(), 2U);
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(ServiceAnswer, ThatBreaksOffIsALostConnection)
{
    ServiceFixture fix;
    fix.server.script([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{\"quest\":");
        exchange.close();
    });
    EXPECT_EQ(testing::errorOf<URLError>(fix.main, fix.api.nimbrelState()),
              URLError(URLError::Code::networkConnectionLost));
    EXPECT_EQ(fix.requests().size(), 1U);
}

TEST(ServiceAnswer, ThatNeverComesIsALostConnection)
{
    ServiceFixture fix;
    fix.server.script([](Exchange& exchange) { exchange.reset(); });
    EXPECT_EQ(testing::errorOf<URLError>(fix.main, fix.api.nimbrelState()),
              URLError(URLError::Code::networkConnectionLost));
    EXPECT_EQ(fix.requests().size(), 1U);
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
}

TEST(ServiceAnswer, IsNotAskedForAgainWhenAKeptAliveConnectionTurnsOutDead)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    fix.run(fix.api.submission("first"));
    fix.server.script([](Exchange& exchange) { exchange.reset(); });
    EXPECT_EQ(testing::errorOf<URLError>(fix.main, fix.api.submission("read")),
              URLError(URLError::Code::networkConnectionLost));

    fix.server.answer(Answer::json(200, testing::submissionStatusJSON));
    fix.run(fix.api.submission("second"));
    fix.server.script([](Exchange& exchange) {
        exchange.readWholeBody();
        exchange.close();
    });
    EXPECT_EQ(testing::errorOf<URLError>(fix.main, fix.api.createSubmission({"terms-1", 1, 1, std::nullopt})),
              URLError(URLError::Code::networkConnectionLost));

    EXPECT_EQ(fix.requests().size(), 4U);
    EXPECT_EQ(fix.server.connectionCount(), 2U);
}

TEST(ServiceAnswer, CannotComeFromAServiceThatIsNotThere)
{
    ServiceFixture fix;
    const APIConfiguration nowhere = configurationOf(testing::LoopbackServer()); // the server is closed again
    const VornAPI api(nowhere, fix.http, fix.tokens);
    EXPECT_EQ(testing::errorOf<URLError>(fix.main, api.nimbrelState()), URLError(URLError::Code::cannotConnectToHost));
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
}

class TransferFailure : public ::testing::TestWithParam<URLError::Code> {
protected:
    ~TransferFailure() override { main_.shutDown(); }

    std::shared_ptr<HeldHTTPSession> http_ = std::make_shared<HeldHTTPSession>();
    std::shared_ptr<InMemoryTokenStore> tokens_ = std::make_shared<InMemoryTokenStore>(testing::adasSession());
    MainContext main_;
    VornAPI api_{{APIConfiguration::productionBaseURL()}, http_, tokens_};
};

TEST_P(TransferFailure, OfARequestPassesThrough)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->fail(0, GetParam());
    main_.runUntilIdle();
    EXPECT_EQ(testing::errorOf<URLError>(call), URLError(GetParam()));
    EXPECT_EQ(http_->count(), 1U);
}

TEST_P(TransferFailure, OfARefreshPassesThrough)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->answer(0, 401);
    main_.runUntilIdle();
    http_->fail(1, GetParam());
    main_.runUntilIdle();
    EXPECT_EQ(testing::errorOf<URLError>(call), URLError(GetParam()));
    EXPECT_EQ(http_->count(), 2U);
    EXPECT_EQ(tokens_->load(), testing::adasSession());
}

TEST_P(TransferFailure, OfARetryPassesThrough)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->answer(0, 401);
    main_.runUntilIdle();
    http_->answer(1, 200, testing::tokenPairJSON(testing::adasSession(2)));
    main_.runUntilIdle();
    http_->fail(2, GetParam());
    main_.runUntilIdle();
    EXPECT_EQ(testing::errorOf<URLError>(call), URLError(GetParam()));
    EXPECT_EQ(http_->count(), 3U);
    EXPECT_EQ(tokens_->load(), testing::adasSession(2));
}

INSTANTIATE_TEST_SUITE_P(, TransferFailure,
                         ::testing::Values(URLError::Code::unknown, URLError::Code::badURL,
                                           URLError::Code::unsupportedURL, URLError::Code::cannotFindHost,
                                           URLError::Code::cannotConnectToHost, URLError::Code::networkConnectionLost,
                                           URLError::Code::notConnectedToInternet, URLError::Code::timedOut,
                                           URLError::Code::secureConnectionFailed,
                                           URLError::Code::requestBodyStreamExhausted));

class NoAnswerAtAll : public TransferFailure {};

TEST_P(NoAnswerAtAll, IsAnInvalidResponse)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->fail(0, GetParam());
    main_.runUntilIdle();
    EXPECT_EQ(testing::errorOf<APIError>(call), invalid);
}

TEST_P(NoAnswerAtAll, ToARefreshIsAnInvalidResponseAndKeepsTheSession)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->answer(0, 401);
    main_.runUntilIdle();
    http_->fail(1, GetParam());
    main_.runUntilIdle();
    EXPECT_EQ(testing::errorOf<APIError>(call), invalid);
    EXPECT_EQ(tokens_->load(), testing::adasSession());
}

INSTANTIATE_TEST_SUITE_P(, NoAnswerAtAll,
                         ::testing::Values(URLError::Code::badServerResponse,
                                           URLError::Code::dataLengthExceedsMaximum));

TEST(ServiceRequest, MayBeSilentForThirtySeconds)
{
    const auto http = std::make_shared<HeldHTTPSession>();
    const VornAPI api({APIConfiguration::productionBaseURL()}, http,
                      std::make_shared<InMemoryTokenStore>(testing::adasSession()));
    MainContext main;
    const Started link(main, api.createDeviceLink({"Mac", "macos", "1.0.0", std::nullopt}));
    const Started poll(main, api.pollDeviceLink("link-1", "secret-canary-1"));
    const Started state(main, api.nimbrelState());
    const Started abort(main, api.abortSubmission("sub-1"));
    main.runUntilIdle();
    http->answer(2, 401);
    main.runUntilIdle();
    ASSERT_EQ(http->count(), 5U); // the last one is the refresh
    for (std::size_t index = 0; index < http->count(); ++index)
        EXPECT_EQ(http->request(index).inactivityLimit, 30s) << http->summary(index);
    main.shutDown();
}

} // namespace
} // namespace vorn
