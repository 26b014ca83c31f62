#include "Tools/Terminal/SubmissionWatch.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Sessions/InMemoryTokenStore.h"
#include "tests/support/async/ManualClock.h"
#include "tests/support/log/CapturedLog.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/Started.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

SubmissionStatus submission(const std::string& status)
{
    SubmissionStatus result;
    result.id = "sub-1";
    result.questId = "quest-1";
    result.status = status;
    return result;
}

std::string documentOf(const std::string& status)
{
    return R"({"id":"sub-1","questId":"quest-1","status":")" + status + "\"}";
}

TEST(NextPollDelay, IsLongerWhileAPersonChecks)
{
    struct Case {
        const char* status;
        Clock::Duration watchedFor;
        std::optional<std::chrono::seconds> pause;
    };
    for (const Case& each :
         {Case{"analyzing", 0s, 5s}, Case{"review_pending", 0s, 30s}, Case{"from the future", 0s, 5s},
          Case{"approved", 0s, {}}, Case{"rejected", 0s, {}}, Case{"expired", 0s, {}},
          Case{"analyzing", 1200s - 1ns, 5s}, Case{"analyzing", 1200s, {}}, Case{"review_pending", 1201s, {}}}) {
        EXPECT_EQ(nextPollDelay(submission(each.status), each.watchedFor), each.pause) << each.status;
    }
}

class WatchFixture {
public:
    testing::CapturedLog log;
    std::shared_ptr<testing::HeldHTTPSession> http = std::make_shared<testing::HeldHTTPSession>();
    testing::ManualClock clock;
    MainContext main;
    std::vector<std::string> seen;
    testing::Started<SubmissionStatus> watch{
        main, watchSubmission(VornAPI(APIConfiguration{APIConfiguration::productionBaseURL()}, http,
                                      std::make_shared<InMemoryTokenStore>(testing::adasSession())),
                              &clock, submission("analyzing"),
                              [this](const SubmissionStatus& latest) { seen.push_back(latest.status); })};

    ~WatchFixture() { main.shutDown(); }
    /// Lets `pause` go by and answers the poll at its end.
    void poll(Clock::Duration pause, int status, const std::string& body)
    {
        const std::size_t before = http->count();
        clock.advance(pause - 1ns, main);
        ASSERT_EQ(http->count(), before);
        clock.advance(1ns, main);
        ASSERT_EQ(http->count(), before + 1);
        http->answer(before, status, body);
        main.runUntilIdle();
    }
};

TEST(SubmissionWatch, TellsOfEachChangeUntilTheEnd)
{
    WatchFixture fix;
    fix.poll(5s, 200, documentOf("analyzing"));
    fix.poll(5s, 200, documentOf("review_pending"));
    fix.poll(30s, 200, documentOf("review_pending"));
    fix.poll(30s, 200, documentOf("approved"));
    ASSERT_TRUE(fix.watch.hasEnded());
    EXPECT_EQ(fix.watch.result(), submission("approved"));
    EXPECT_THAT(fix.seen, ElementsAre("review_pending", "approved"));
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(SubmissionWatch, LogsAPollThatFailsAndGoesOn)
{
    WatchFixture fix;
    fix.poll(5s, 500, "");
    fix.poll(5s, 200, documentOf("approved"));
    EXPECT_TRUE(fix.watch.hasEnded());
    EXPECT_THAT(fix.log.lines(), ElementsAre("[app] submission poll failed: The server answered 500."));
}

TEST(SubmissionWatch, StopsAfterTwentyMinutesWithoutAnOutcome)
{
    WatchFixture fix;
    for (int poll = 0; poll < 240; ++poll) fix.poll(5s, 200, documentOf("analyzing"));
    ASSERT_TRUE(fix.watch.hasEnded());
    EXPECT_EQ(fix.watch.result(), submission("analyzing"));
    EXPECT_EQ(fix.clock.now(), 20min);
}

TEST(SubmissionWatch, EndsWithTheSession)
{
    WatchFixture fix;
    fix.poll(5s, 401, "");
    fix.http->answer(1, 401); // the refresh
    fix.main.runUntilIdle();
    EXPECT_EQ(testing::errorOf<APIError>(fix.watch), APIError(APIError::SessionExpired{}));
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

} // namespace
} // namespace vorn
