#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/log/CapturedLog.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::adasSession;
using testing::errorOf;
using testing::HeldHTTPSession;
using ::testing::IsEmpty;
using testing::Started;

Async<bool> ends(Async<> work)
{
    co_await std::move(work);
    co_return true;
}

class CancelledCall : public ::testing::Test {
protected:
    ~CancelledCall() override { main_.shutDown(); }

    void answer(std::size_t index, int status, const std::string& body = "")
    {
        http_->answer(index, status, body);
        main_.runUntilIdle();
    }
    void answerPair(std::size_t index) { answer(index, 200, testing::tokenPairJSON(adasSession(2))); }

    template <class T>
    void cancel(Started<T>& call)
    {
        call.cancel();
        main_.runUntilIdle();
        EXPECT_TRUE(errorOf<Cancelled>(call));
        EXPECT_THAT(log_.lines(), IsEmpty());
    }

    testing::CapturedLog log_;
    std::shared_ptr<HeldHTTPSession> http_ = std::make_shared<HeldHTTPSession>();
    std::shared_ptr<InMemoryTokenStore> tokens_ = std::make_shared<InMemoryTokenStore>(adasSession(1));
    MainContext main_;
    VornAPI api_{{APIConfiguration::productionBaseURL()}, http_, tokens_};
};

TEST_F(CancelledCall, BeforeItBeginsSendsNothing)
{
    Started call(main_, api_.nimbrelState());
    call.cancel();
    main_.runUntilIdle();
    EXPECT_EQ(main_.runningTasks(), 0U);
    EXPECT_FALSE(call.hasEnded());
    EXPECT_EQ(http_->count(), 0U);
}

TEST_F(CancelledCall, WhileItsRequestIsUnderWayEndsTheTransfer)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    cancel(call);
    EXPECT_TRUE(http_->isCancelled(0));
    EXPECT_EQ(http_->count(), 1U);
    EXPECT_EQ(main_.runningTasks(), 0U);
}

TEST_F(CancelledCall, WithItsAnswerOnTheWayEndsWithoutIt)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    http_->answer(0, 401);
    cancel(call);
    EXPECT_EQ(http_->count(), 1U);
    EXPECT_EQ(tokens_->load(), adasSession(1));
}

TEST_F(CancelledCall, WhileItRefreshesLetsTheRefreshFinish)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    cancel(call);
    ASSERT_EQ(http_->count(), 2U);
    EXPECT_FALSE(http_->isCancelled(1)) << "the service may have used the token up already";
    answerPair(1);
    EXPECT_EQ(tokens_->load(), adasSession(2));
    EXPECT_EQ(http_->count(), 2U);
    EXPECT_EQ(main_.runningTasks(), 0U);
}

TEST_F(CancelledCall, WithTheNewSessionOnTheWayIsNotSentAgain)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    http_->answer(1, 200, testing::tokenPairJSON(adasSession(2)));
    cancel(call);
    EXPECT_EQ(tokens_->load(), adasSession(2));
    EXPECT_EQ(http_->count(), 2U);
}

TEST_F(CancelledCall, WhileItIsSentAgainEndsThatTransfer)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    answerPair(1);
    cancel(call);
    ASSERT_EQ(http_->count(), 3U);
    EXPECT_TRUE(http_->isCancelled(2));
    EXPECT_EQ(tokens_->load(), adasSession(2));
    EXPECT_EQ(main_.runningTasks(), 0U);
}

TEST_F(CancelledCall, WithItsSecondRefusalOnTheWayKeepsTheSession)
{
    Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    answerPair(1);
    http_->answer(2, 401);
    cancel(call);
    EXPECT_EQ(tokens_->load(), adasSession(2));
}

TEST_F(CancelledCall, ThatBeganTheRefreshLeavesItToTheOthers)
{
    Started first(main_, api_.nimbrelState());
    const Started second(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    answer(1, 401);
    cancel(first);
    answerPair(2);
    ASSERT_EQ(http_->count(), 4U);
    EXPECT_EQ(http_->summary(3), "GET /api/v1/desktop/nimbrel, Bearer token-canary-2");
    answer(3, 200, testing::nimbrelStateJSON);
    EXPECT_EQ(second.result(), testing::sampleNimbrelState());
}

TEST_F(CancelledCall, ThatWaitsForARefreshLeavesItToTheOneThatBeganIt)
{
    const Started first(main_, api_.nimbrelState());
    Started second(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    answer(1, 401);
    cancel(second);
    answerPair(2);
    answer(3, 200, testing::nimbrelStateJSON);
    EXPECT_EQ(first.result(), testing::sampleNimbrelState());
    EXPECT_EQ(http_->count(), 4U);
}

TEST_F(CancelledCall, LeavesNothingBehindWhenItsThreadEnds)
{
    const Started call(main_, api_.nimbrelState());
    main_.runUntilIdle();
    answer(0, 401);
    main_.shutDown();
    EXPECT_TRUE(errorOf<Cancelled>(call));
    EXPECT_TRUE(http_->isCancelled(1));
    EXPECT_EQ(tokens_->load(), adasSession(1));
}

TEST_F(CancelledCall, OfALinkEndsItsTransfer)
{
    Started poll(main_, api_.pollDeviceLink("link-1", "secret-canary-1"));
    main_.runUntilIdle();
    cancel(poll);
    EXPECT_TRUE(http_->isCancelled(0));
}

class CancelledLogout : public CancelledCall, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(CancelledLogout, SaysNothingMoreAndHasForgotten)
{
    Started logout(main_, ends(api_.logout()));
    main_.runUntilIdle();
    const std::size_t answered = GetParam();
    if (answered > 0) answer(0, 401);
    if (answered > 1) answerPair(1);
    ASSERT_EQ(http_->count(), answered + 1);
    cancel(logout);
    EXPECT_TRUE(http_->isCancelled(answered));
    EXPECT_EQ(http_->count(), answered + 1);
    EXPECT_EQ(tokens_->load(), std::nullopt);
    EXPECT_EQ(main_.runningTasks(), 0U);
}

INSTANTIATE_TEST_SUITE_P(AfterSomeAnswers, CancelledLogout, ::testing::Values(0, 1, 2));

} // namespace
} // namespace vorn
