#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::questJSON;
using testing::submissionJSON;

class Review : public ::testing::Test {
protected:
    Review()
    {
        fix_.launchDone();
        QObject::connect(&fix_.model(), &AppModel::reviewWatchEnded, [this] { ++watchesEnded_; });
    }

    std::size_t polls() const { return fix_.asked(ModelFixture::review); }
    std::string status() { return fix_.model().submission().value().status.word(); }

    ModelFixture fix_;
    int watchesEnded_ = 0;
};

TEST_F(Review, IsAskedForEveryFiveSeconds)
{
    for (std::size_t poll = 1; poll <= 5; ++poll) {
        fix_.advance(5s - 1ns);
        EXPECT_EQ(polls(), poll - 1);
        fix_.advance(1ns);
        EXPECT_EQ(polls(), poll);
        fix_.answer(ModelFixture::review, submissionJSON("analyzing"));
    }
}

TEST_F(Review, ByAPersonIsAskedForEveryThirtySeconds)
{
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("review_pending"));
    EXPECT_EQ(status(), "review_pending");
    fix_.advance(30s - 1ns);
    EXPECT_EQ(polls(), 1U);
    fix_.advance(1ns);
    EXPECT_EQ(polls(), 2U);
    fix_.answer(ModelFixture::review, submissionJSON("analyzing"));
    fix_.advance(5s);
    EXPECT_EQ(polls(), 3U);
}

TEST_F(Review, IsWatchedForTwentyMinutes)
{
    for (int poll = 1; poll <= 240; ++poll) {
        fix_.advance(5s);
        fix_.answer(ModelFixture::review, submissionJSON("analyzing"));
    }
    EXPECT_EQ(fix_.clock.pendingSleeps(), 0U);
    fix_.advance(1h);
    EXPECT_EQ(polls(), 240U);
    EXPECT_EQ(status(), "analyzing");
    EXPECT_EQ(fix_.model().step(), Step::done);
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
}

TEST_F(Review, ThatHasEndedIsAskedForOnceAndRefreshesTheQuest)
{
    fix_.changes().forget();
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("approved"));
    EXPECT_EQ(status(), "approved");
    fix_.answer(ModelFixture::quest,
                R"({"quest":{"id":"quest-1","status":"approved","availableAt":"2026-03-08T09:00:00Z"},
                    "handles":["+15550102030"],"maxBytes":1000000})");
    EXPECT_TRUE(fix_.model().availability()->is<QuestAvailability::Cooldown>());
    EXPECT_EQ(fix_.changes().counts(), (std::map<std::string, int>{{"submissionChanged", 1}, {"nimbrelChanged", 1}}));
    fix_.advance(1h);
    EXPECT_EQ(polls(), 1U);
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
}

TEST_F(Review, TellsOfNoChangeWithoutOne)
{
    fix_.changes().forget();
    for (int poll = 0; poll < 5; ++poll) {
        fix_.advance(5s);
        fix_.answer(ModelFixture::review, submissionJSON("analyzing"));
    }
    EXPECT_THAT(fix_.changes().counts(), IsEmpty());
}

TEST_F(Review, SurvivesAFailedPoll)
{
    fix_.advance(5s);
    fix_.fail(ModelFixture::review, URLError::Code::networkConnectionLost);
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, testing::errorJSON("Try later.", "busy"), 500);
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("review_pending"));
    EXPECT_EQ(status(), "review_pending");
    EXPECT_THAT(fix_.log.lines(), ElementsAre("[app] submission poll failed: The network connection was lost.",
                                              "[app] submission poll failed: HTTP 500: Try later."));
}

TEST_F(Review, IsAskedForAgainWhenTheQuestCannotBeRefreshed)
{
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("approved"));
    fix_.fail(ModelFixture::quest, URLError::Code::timedOut);
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("approved"));
    fix_.answer(ModelFixture::quest, questJSON());
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
    EXPECT_THAT(fix_.log.lines(), ElementsAre("[app] submission poll failed: The request timed out."));
}

TEST_F(Review, EndsTheSessionThatTheServiceHasEnded)
{
    fix_.advance(5s);
    fix_.refuse(ModelFixture::review, 401);
    fix_.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(fix_.model().step(), Step::link);
    EXPECT_EQ(fix_.model().session(), std::nullopt);
    EXPECT_EQ(fix_.model().submission(), std::nullopt);
}

TEST_F(Review, TellsThatItIsNoLongerWatchedOnceItHasEndedOrTakesTooLong)
{
    fix_.advance(5s);
    fix_.answer(ModelFixture::review, submissionJSON("approved"));
    EXPECT_EQ(watchesEnded_, 0);
    fix_.answer(ModelFixture::quest, questJSON());
    EXPECT_EQ(watchesEnded_, 1);

    fix_.model().watchSubmission("sub-1");
    for (int poll = 1; poll <= 240; ++poll) {
        EXPECT_EQ(watchesEnded_, 1);
        fix_.advance(5s);
        fix_.answer(ModelFixture::review, submissionJSON("analyzing"));
    }
    EXPECT_EQ(watchesEnded_, 2);
}

TEST_F(Review, TellsNothingOfTheKindWhenTheSessionHasEnded)
{
    fix_.advance(5s);
    fix_.refuse(ModelFixture::review, 401);
    fix_.refuse(ModelFixture::refreshes, 401);
    ASSERT_EQ(fix_.model().session(), std::nullopt);
    EXPECT_EQ(watchesEnded_, 0);
}

TEST_F(Review, IsLeftToAnotherUserOnceSheIsSignedIn)
{
    fix_.tokens->save(testing::belasSession()); // in another process
    fix_.advance(1h);
    EXPECT_EQ(polls(), 0U);
    EXPECT_EQ(fix_.tokens->load(), testing::belasSession());
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_F(Review, IsNotWatchedOnceTheStepWasLeft)
{
    fix_.advance(5s);
    const auto poll = fix_.http->waiting(ModelFixture::review).value();
    fix_.model().go(Step::consent);
    fix_.http->answer(poll, 200, submissionJSON("approved"));
    fix_.run();
    EXPECT_EQ(status(), "analyzing");
    fix_.advance(1h);
    EXPECT_EQ(polls(), 1U);
}

TEST_F(Review, IsWatchedOnceHoweverOftenItIsBegun)
{
    for (int round = 0; round < 5; ++round) fix_.model().watchSubmission("sub-1");
    fix_.advance(5s);
    EXPECT_EQ(fix_.http->waiting().size(), 1U);
    EXPECT_EQ(fix_.context.runningTasks(), 1U);
}

} // namespace
} // namespace vorn
