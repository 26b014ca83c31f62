#include "tests/VornMacCore/Client/AuthenticatedCalls.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace vorn {
namespace {

using testing::Answer;
using testing::AuthenticatedCall;
using testing::authenticatedCalls;
using ::testing::ElementsAre;
using testing::ServiceFixture;

const APIError notSignedIn(APIError::NotSignedIn{});
const APIError sessionChanged(APIError::SessionChanged{});

class SessionOfACall : public ::testing::TestWithParam<AuthenticatedCall> {
protected:
    std::optional<APIError> refusalOn(ServiceFixture& fix, const VornAPI& api)
    {
        return fix.apiError(GetParam().call(api));
    }
};

TEST_P(SessionOfACall, IsMissedWhenNobodyIsSignedIn)
{
    ServiceFixture fix(std::nullopt);
    EXPECT_EQ(refusalOn(fix, fix.api), notSignedIn);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
}

TEST_P(SessionOfACall, HasChangedForAPinnedClientWhenNobodyIsSignedIn)
{
    ServiceFixture fix(std::nullopt);
    EXPECT_EQ(refusalOn(fix, fix.api.pinned("user-ada")), sessionChanged);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
}

TEST_P(SessionOfACall, HasChangedForAClientPinnedToSomebodyElse)
{
    ServiceFixture fix(testing::belasSession());
    EXPECT_EQ(refusalOn(fix, fix.api.pinned("user-ada")), sessionChanged);
    EXPECT_EQ(refusalOn(fix, fix.api.pinned("")), sessionChanged);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
    EXPECT_EQ(fix.tokens->load(), testing::belasSession());
}

TEST_P(SessionOfACall, IsTheStoredOne)
{
    ServiceFixture fix;
    for (const VornAPI& api : {fix.api, fix.api.pinned("user-ada"), fix.api.pinned("user-bela").pinned("user-ada")}) {
        fix.server.answer({.status = 500});
        EXPECT_EQ(refusalOn(fix, api), testing::httpError(500));
        EXPECT_EQ(fix.server.requests().back().header("Authorization"), "Bearer " + testing::adasSession().token);
    }
}

INSTANTIATE_TEST_SUITE_P(, SessionOfACall, ::testing::ValuesIn(authenticatedCalls()),
                         [](const auto& info) { return info.param.name; });

TEST(PinnedClient, StopsOnceAnotherUserIsLinked)
{
    ServiceFixture fix;
    const VornAPI pinned = fix.api.pinned("user-ada");
    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    fix.run(pinned.nimbrelState());
    fix.api.adopt(testing::belasSession());
    EXPECT_EQ(fix.apiError(pinned.nimbrelState()), sessionChanged);
    EXPECT_EQ(fix.requests().size(), 1U);

    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    fix.run(fix.api.nimbrelState()); // the client it was copied from is not pinned
    EXPECT_EQ(fix.requests().back(), fix.get("desktop/nimbrel").bearer(testing::belasSession().token));
}

TEST(PinnedClient, SharesTheSession)
{
    ServiceFixture fix(std::nullopt);
    const VornAPI pinned = fix.api.pinned("user-ada");
    pinned.adopt(testing::adasSession());
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
    EXPECT_EQ(pinned.forget(), testing::adasSession());
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
}

TEST(PinnedClient, OutlivesTheClientItWasCopiedFrom)
{
    ServiceFixture fix;
    const auto pinned = [&] { return VornAPI(configurationOf(fix.server), fix.http, fix.tokens).pinned("user-ada"); }();
    fix.server.answer({.status = 204});
    fix.run(pinned.abortSubmission("sub-1"));
    EXPECT_EQ(fix.requests().size(), 1U);
}

TEST(Session, IsReadWhenTheCallBeginsToRun)
{
    ServiceFixture fix(std::nullopt);
    auto call = fix.api.nimbrelState();
    fix.api.adopt(testing::adasSession());
    fix.server.answer(Answer::json(200, testing::nimbrelStateJSON));
    EXPECT_EQ(fix.run(std::move(call)), testing::sampleNimbrelState());
}

TEST(Session, IsForgottenOfOneUserAlone)
{
    ServiceFixture fix;
    EXPECT_EQ(fix.api.forget("user-bela"), std::nullopt);
    EXPECT_EQ(fix.tokens->load(), testing::adasSession());
    EXPECT_EQ(fix.api.forget("user-ada"), testing::adasSession());
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
}

TEST(Session, IsForgottenHereOnly)
{
    ServiceFixture fix;
    EXPECT_EQ(fix.api.forget(), testing::adasSession());
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_EQ(fix.api.forget(), std::nullopt);
    EXPECT_EQ(fix.server.connectionCount(), 0U);
}

class RefusingStore final : public TokenStore {
public:
    std::optional<StoredSession> load() override { return std::nullopt; }
    void save(const StoredSession& /*session*/) override { throw std::domain_error("full"); }
    void clear() noexcept override {}
};

TEST(Session, ThatCannotBeSavedFailsToBeAdoptedAsTheStoreSays)
{
    ServiceFixture fix;
    const VornAPI api(configurationOf(fix.server), fix.http, std::make_shared<RefusingStore>());
    EXPECT_THROW(api.adopt(testing::adasSession()), std::domain_error);
}

} // namespace
} // namespace vorn
