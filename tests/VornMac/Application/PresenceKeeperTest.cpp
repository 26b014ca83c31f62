#include "VornMac/Application/PresenceKeeper.h"

#include "tests/VornMac/Model/ModelFixture.h"

#include <gmock/gmock.h>

#include <fmt/format.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::submissionJSON;

/// Records the calls to the desktop.
class RecordingPresence final : public DesktopPresence {
public:
    std::vector<std::string> calls;

    void askToNotify() override { calls.emplace_back("ask"); }
    void notify(const Notification& shown) override
    {
        calls.push_back(fmt::format("notify [{}] {} | {}{}", shown.action, shown.title, shown.body,
                                    shown.hasSound ? " (sound)" : ""));
    }
    void withdrawNotification() override { calls.emplace_back("withdraw"); }
    void stayAwake(const std::string& reason) override { calls.push_back("awake: " + reason); }
    void allowSleep() override { calls.emplace_back("sleep"); }
    void showProgress(std::optional<int> percent) override
    {
        calls.push_back(percent ? fmt::format("{} %", *percent) : "no bar");
    }
    void playSound() override { calls.emplace_back("sound"); }
};

struct PresenceKeeperTest : ::testing::Test {
    ModelFixture fix;
    RecordingPresence presence;
    std::optional<PresenceKeeper> keeper;
    bool isActive = false;
    bool reducesMotion = false;

    PresenceKeeperTest()
    {
        fix.onLaunched = [this] {
            keeper.emplace(fix.model(), presence,
                           PresenceKeeper::Window{.isActive = [this] { return isActive; },
                                                  .reducesMotion = [this] { return reducesMotion; },
                                                  .askForAttention = [this] { note("attention"); }});
            fix.model().start();
        };
    }
    ~PresenceKeeperTest() override { keeper.reset(); }

    void note(const char* call) { presence.calls.emplace_back(call); }
    std::vector<std::string> newCalls() { return std::exchange(presence.calls, {}); }

    /// The calls to the desktop when a review ends with `status`.
    std::vector<std::string> whenReviewEnds(const std::string& status)
    {
        fix.launchDone();
        newCalls();
        fix.advance(5s);
        fix.answer(ModelFixture::review, submissionJSON(status));
        return newCalls();
    }
};

TEST_F(PresenceKeeperTest, FollowsAnUploadToItsAcceptance)
{
    fix.launchFound();
    EXPECT_THAT(newCalls(), IsEmpty());
    fix.model().upload();
    EXPECT_THAT(newCalls(), ElementsAre("awake: Uploading", "0 %"));
    fix.runAll();
    fix.answer(ModelFixture::creates, testing::openedJSON());
    fix.runAll();
    EXPECT_THAT(newCalls(), IsEmpty()) << "still nothing is sent";
    fix.http->acknowledge(fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix.run();
    EXPECT_THAT(newCalls(), ElementsAre("100 %"));
    fix.answer(ModelFixture::completes, submissionJSON("analyzing"));
    EXPECT_THAT(newCalls(), ::testing::UnorderedElementsAre("sleep", "no bar", "ask"));
}

TEST_F(PresenceKeeperTest, LetsGoWhenAnUploadFails)
{
    fix.launchUploading();
    newCalls();
    fix.fail(ModelFixture::puts, URLError::Code::networkConnectionLost);
    fix.answer(ModelFixture::aborts);
    EXPECT_THAT(newCalls(), ElementsAre("sleep", "no bar"));
}

TEST_F(PresenceKeeperTest, LetsGoWhenTheSessionEnds)
{
    fix.launchUploading();
    newCalls();
    fix.model().signOut();
    EXPECT_THAT(newCalls(), ElementsAre("sleep", "no bar"));
}

TEST_F(PresenceKeeperTest, TellsWhoLooksElsewhereHowTheReviewEnded)
{
    EXPECT_THAT(whenReviewEnds("approved"),
                ElementsAre("notify [Open Vorn] You earned $12.50 | "
                            "Thanks for your Nimbrel chat. The reward is in your Vorn balance. (sound)",
                            "attention"));
    fix.answer(ModelFixture::quest, testing::questJSON());
    EXPECT_THAT(newCalls(), IsEmpty()) << "once";
    keeper->withdraw();
    keeper->withdraw();
    EXPECT_THAT(newCalls(), ElementsAre("withdraw"));
}

TEST_F(PresenceKeeperTest, TellsBadNewsQuietly)
{
    EXPECT_THAT(whenReviewEnds("rejected"),
                ElementsAre("notify [Open Vorn] Not accepted | This upload wasn't accepted.", "attention"));
    fix.answer(ModelFixture::quest, testing::questJSON());
    fix.model().signOut();
    EXPECT_THAT(newCalls(), ElementsAre("withdraw"));
}

TEST_F(PresenceKeeperTest, LeavesTheTellingToAWindowThatIsLookedAt)
{
    isActive = true;
    EXPECT_THAT(whenReviewEnds("approved"), ElementsAre("sound"));
}

TEST_F(PresenceKeeperTest, IsSilentBesideAWindowThatKeepsStill)
{
    isActive = true;
    reducesMotion = true;
    EXPECT_THAT(whenReviewEnds("approved"), IsEmpty());
}

TEST_F(PresenceKeeperTest, SaysNothingWhileAPersonStillChecks)
{
    EXPECT_THAT(whenReviewEnds("review_pending"), IsEmpty());
}

} // namespace
} // namespace vorn
