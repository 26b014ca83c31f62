#include "VornMacCore/Client/VornAPI.h"
#include "VornMacCore/Wire/JSONErrors.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <ostream>
#include <stdexcept>

namespace vorn {
namespace {

using testing::adasSession;
using testing::Answer;
using testing::belasSession;
using ::testing::ElementsAre;
using testing::Exchange;
using testing::httpError;
using ::testing::IsEmpty;
using testing::ServiceFixture;
using testing::ServiceRequest;
using testing::Started;
using testing::tokenPairJSON;

const APIError sessionExpired(APIError::SessionExpired{});
const APIError sessionChanged(APIError::SessionChanged{});

/// What happens while the service answers: the user signs out, or links again.
using Meanwhile = std::function<void(InMemoryTokenStore&)>;

class SessionRefresh : public ::testing::Test {
protected:
    void refuse() { fix_.server.answer({.status = 401}); }
    void grantPair(int number) { fix_.server.answer(Answer::json(200, tokenPairJSON(adasSession(number)))); }
    void answerState() { fix_.server.answer(Answer::json(200, testing::nimbrelStateJSON)); }
    void answerAfter(Meanwhile meanwhile, const Answer& answer)
    {
        fix_.server.script([meanwhile = std::move(meanwhile), answer, tokens = fix_.tokens](Exchange& exchange) {
            exchange.readWholeBody();
            meanwhile(*tokens);
            exchange.answer(answer);
        });
    }
    ServiceRequest state(const StoredSession& session) const
    {
        return fix_.get("desktop/nimbrel").bearer(session.token);
    }
    ServiceRequest refresh(const StoredSession& session) const { return fix_.refresh(session); }

    ServiceFixture fix_;
};

TEST_F(SessionRefresh, RenewsARefusedSessionAndSendsTheCallOnceMore)
{
    refuse();
    grantPair(2);
    answerState();
    EXPECT_EQ(fix_.run(fix_.api.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1)), refresh(adasSession(1)), state(adasSession(2))));
    EXPECT_EQ(fix_.tokens->load(), adasSession(2));
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_F(SessionRefresh, SendsABodyAgainAsItWas)
{
    refuse();
    grantPair(2);
    fix_.server.answer(Answer::json(201, testing::submissionUploadJSON));
    fix_.run(fix_.api.createSubmission({"terms-1", 1, 1, std::nullopt}));
    const auto create =
        fix_.post("desktop/nimbrel/submissions").json(R"({"termsVersion":"terms-1","sizeBytes":1,"partCount":1})");
    EXPECT_THAT(fix_.requests(), ElementsAre(create.bearer(adasSession(1).token), refresh(adasSession(1)),
                                             create.bearer(adasSession(2).token)));
}

TEST_F(SessionRefresh, TakesEveryStatusOf2xxForAPair)
{
    refuse();
    fix_.server.answer(Answer::json(201, tokenPairJSON(adasSession(2))));
    answerState();
    EXPECT_EQ(fix_.run(fix_.api.nimbrelState()), testing::sampleNimbrelState());
}

TEST_F(SessionRefresh, KeepsWhoTheUserIs)
{
    fix_.api.adopt({"token-canary-old", "refresh-canary-old", "user-zoe", "Zoë ☃"});
    refuse();
    grantPair(2);
    answerState();
    fix_.run(fix_.api.pinned("user-zoe").nimbrelState());
    EXPECT_EQ(fix_.tokens->load(), StoredSession("token-canary-2", "refresh-canary-2", "user-zoe", "Zoë ☃"));
}

TEST_F(SessionRefresh, IsNotAskedForWhenAnotherCallerWasFaster)
{
    answerAfter([](auto& tokens) { tokens.save(adasSession(2)); }, {.status = 401});
    answerState();
    fix_.run(fix_.api.nimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1)), state(adasSession(2))));
}

TEST_F(SessionRefresh, IsNotAskedForOnceTheUserHasSignedOut)
{
    answerAfter([](auto& tokens) { tokens.clear(); }, {.status = 401});
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionChanged);
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1))));
}

TEST_F(SessionRefresh, IsNotAskedForOnceSomebodyElseIsSignedIn)
{
    answerAfter([](auto& tokens) { tokens.save(belasSession()); }, {.status = 401});
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionChanged);
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1))));
    EXPECT_EQ(fix_.tokens->load(), belasSession());
}

TEST_F(SessionRefresh, ThatEndsAfterTheUserSignedOutSavesNothing)
{
    refuse();
    answerAfter([](auto& tokens) { tokens.clear(); }, Answer::json(200, tokenPairJSON(adasSession(2))));
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionChanged);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    EXPECT_EQ(fix_.requests().size(), 2U);
}

TEST_F(SessionRefresh, ThatEndsAfterTheUserLinkedAgainSavesNothing)
{
    for (const StoredSession& linked : {belasSession(), adasSession(9)}) {
        fix_.api.adopt(adasSession(1));
        refuse();
        answerAfter([linked](auto& tokens) { tokens.save(linked); }, Answer::json(200, tokenPairJSON(adasSession(2))));
        EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionChanged);
        EXPECT_EQ(fix_.tokens->load(), linked);
    }
    EXPECT_EQ(fix_.requests().size(), 4U);
}

TEST_F(SessionRefresh, IsMeasuredByTheRefreshTokenAlone)
{
    StoredSession sameRefreshToken = adasSession(1);
    sameRefreshToken.token = "token-canary-other";
    refuse();
    answerAfter([=](auto& tokens) { tokens.save(sameRefreshToken); }, Answer::json(200, tokenPairJSON(adasSession(2))));
    answerState();
    fix_.run(fix_.api.nimbrelState());
    EXPECT_EQ(fix_.tokens->load(), adasSession(2));
}

TEST_F(SessionRefresh, ThatIsUndecodableKeepsTheSession)
{
    refuse();
    fix_.server.answer(Answer::json(200, R"({"token":"token-canary-2"})"));
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), APIError(APIError::InvalidResponse{}));
    EXPECT_EQ(fix_.tokens->load(), adasSession(1));
    EXPECT_EQ(fix_.requests().size(), 2U);
    EXPECT_THAT(fix_.log.lines(), ElementsAre("[api] undecodable TokenPair answer"));
}

TEST_F(SessionRefresh, SendsNothingForATokenThatCannotBeEncoded)
{
    fix_.api.adopt({"token-canary-1", "refresh-canary-\xFF", "user-ada", "Ada"});
    refuse();
    EXPECT_THROW(fix_.run(fix_.api.nimbrelState()), UnencodableJSON);
    EXPECT_EQ(fix_.requests().size(), 1U);
}

TEST_F(SessionRefresh, IsFollowedByTheOrdinaryReadingOfAnswers)
{
    refuse();
    grantPair(2);
    fix_.server.answer(Answer::json(404, testing::errorJSON("No.", "off")));
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), httpError(404, "No.", "off"));
    EXPECT_EQ(fix_.tokens->load(), adasSession(2));
}

TEST_F(SessionRefresh, IsDoneAnewForEachCallThatIsRefusedLater)
{
    for (int round = 1; round <= 3; ++round) {
        refuse();
        grantPair(round + 1);
        answerState();
        fix_.run(fix_.api.nimbrelState());
        EXPECT_EQ(fix_.requests().at(3U * static_cast<std::size_t>(round) - 2), refresh(adasSession(round)));
    }
    EXPECT_EQ(fix_.requests().size(), 9U);
}

TEST_F(SessionRefresh, IsTriedOnceAndASecondRefusalEndsTheSession)
{
    refuse();
    grantPair(2);
    refuse();
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionExpired);
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1)), refresh(adasSession(1)), state(adasSession(2))));
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
}

TEST_F(SessionRefresh, LeavesASessionAloneThatWasAdoptedBeforeTheSecondRefusal)
{
    for (const StoredSession& linked : {belasSession(), adasSession(9)}) {
        fix_.api.adopt(adasSession(1));
        refuse();
        grantPair(2);
        answerAfter([linked](auto& tokens) { tokens.save(linked); }, {.status = 401});
        EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionExpired);
        EXPECT_EQ(fix_.tokens->load(), linked);
    }
}

TEST_F(SessionRefresh, EndsASessionThatAnotherCallerRenewedInVain)
{
    answerAfter([](auto& tokens) { tokens.save(adasSession(2)); }, {.status = 401});
    refuse();
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionExpired);
    EXPECT_EQ(fix_.requests().size(), 2U);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
}

class RefusedRefresh : public SessionRefresh, public ::testing::WithParamInterface<int> {};

TEST_P(RefusedRefresh, EndsTheSessionWithoutBeingRead)
{
    refuse();
    fix_.server.answer(Answer::json(GetParam(), tokenPairJSON(adasSession(2))));
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionExpired);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    EXPECT_THAT(fix_.requests(), ElementsAre(state(adasSession(1)), refresh(adasSession(1))));
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_P(RefusedRefresh, LeavesASessionAloneThatWasAdoptedMeanwhile)
{
    refuse();
    answerAfter([](auto& tokens) { tokens.save(adasSession(9)); }, {.status = GetParam()});
    EXPECT_EQ(fix_.apiError(fix_.api.nimbrelState()), sessionExpired);
    EXPECT_EQ(fix_.tokens->load(), adasSession(9));
}

INSTANTIATE_TEST_SUITE_P(, RefusedRefresh, ::testing::Values(300, 302, 400, 401, 403, 404, 409, 429, 500, 503));

class StoreThatFillsUp final : public TokenStore {
public:
    std::optional<StoredSession> load() override { return adasSession(1); }
    void save(const StoredSession& /*session*/) override { throw std::domain_error("full"); }
    void clear() noexcept override { ADD_FAILURE() << "cleared"; }
};

TEST_F(SessionRefresh, FailsAsTheStoreDoesThatCannotSaveIt)
{
    const VornAPI api(configurationOf(fix_.server), fix_.http, std::make_shared<StoreThatFillsUp>());
    for (int round = 0; round < 2; ++round) { // the lock is free again
        refuse();
        grantPair(2);
        EXPECT_THROW(fix_.run(api.nimbrelState()), std::domain_error);
    }
    EXPECT_EQ(fix_.requests().size(), 4U);
}

TEST_F(SessionRefresh, IsSharedByTenCallsRefusedTogether)
{
    constexpr std::size_t callers = 10;
    fix_.server.respond([this](const testing::ReceivedRequest& request) {
        const bool old = request.header("Authorization") == "Bearer " + adasSession(1).token;
        if (request.method == "POST") return Answer::json(200, tokenPairJSON(adasSession(2)));
        if (!old) return Answer::json(200, testing::nimbrelStateJSON);
        EXPECT_TRUE(fix_.server.waitForRequests(callers));
        return Answer{.status = 401};
    });
    std::vector<Started<NimbrelState>> calls;
    for (std::size_t caller = 0; caller < callers; ++caller)
        calls.emplace_back(fix_.main, (caller % 2 == 0 ? fix_.api : fix_.api.pinned("user-ada")).nimbrelState());
    for (const auto& call : calls) EXPECT_EQ(call.result(fix_.main), testing::sampleNimbrelState());

    const auto requests = fix_.requests();
    EXPECT_EQ(std::ranges::count(requests, state(adasSession(1))), callers);
    EXPECT_EQ(std::ranges::count(requests, refresh(adasSession(1))), 1);
    EXPECT_EQ(std::ranges::count(requests, state(adasSession(2))), callers);
    EXPECT_EQ(requests.size(), 2 * callers + 1);
}

TEST_F(SessionRefresh, RefusedForTenCallsTogetherEndsAllOfThem)
{
    constexpr std::size_t callers = 10;
    fix_.server.respond([this](const testing::ReceivedRequest& request) {
        if (request.method == "GET") EXPECT_TRUE(fix_.server.waitForRequests(callers));
        return Answer{.status = 401};
    });
    std::vector<Started<NimbrelState>> calls;
    for (std::size_t caller = 0; caller < callers; ++caller) calls.emplace_back(fix_.main, fix_.api.nimbrelState());
    fix_.main.runUntil([&] { return std::ranges::all_of(calls, [](const auto& call) { return call.hasEnded(); }); });
    std::size_t refreshes = 0;
    for (const auto& request : fix_.requests()) refreshes += request == refresh(adasSession(1)) ? 1 : 0;
    EXPECT_EQ(refreshes, 1U);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    std::size_t expired = 0;
    for (const auto& call : calls) {
        const auto error = testing::errorOf<APIError>(call);
        // A call that reads the store only after it was cleared finds no session.
        EXPECT_TRUE(error == sessionExpired || error == sessionChanged);
        expired += error == sessionExpired ? 1 : 0;
    }
    EXPECT_GE(expired, 1U);
}

} // namespace
} // namespace vorn
