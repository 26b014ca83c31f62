#include "tests/VornMac/View/ScreenFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::linkJSON;
using testing::ModelFixture;
using testing::pollJSON;
using testing::questJSON;
using testing::ScreenFixture;

class Screen : public ::testing::Test {
protected:
    QString status() { return fix_.screen().text().status.text; }

    ScreenFixture fix_;
};

TEST_F(Screen, FollowsEveryPhaseOfLinking)
{
    fix_.fix.launch();
    fix_.show();
    EXPECT_EQ(fix_.value("stepName"), "link");
    EXPECT_EQ(status(), "Getting a code…");
    EXPECT_EQ(fix_.value("qrPayload"), "");
    EXPECT_EQ(fix_.value("isSignedIn"), "false");
    EXPECT_EQ(fix_.value("identity"), "");

    fix_.fix.answer(ModelFixture::links, linkJSON());
    EXPECT_EQ(status(), "Waiting for your phone");
    EXPECT_EQ(fix_.value("isCodeRead"), "false");
    EXPECT_EQ(fix_.value("qrPayload"), testing::linkPayload);

    fix_.fix.advance(2s);
    fix_.fix.answer(ModelFixture::polls, pollJSON("scanned"));
    EXPECT_EQ(status(), "Scanned. Confirm Link this Mac on your phone.");
    EXPECT_EQ(fix_.value("isCodeRead"), "true");

    fix_.fix.advance(2s);
    fix_.fix.answer(ModelFixture::polls, pollJSON("rejected"));
    EXPECT_EQ(status(), "Your phone declined the link. Here's a new code.");
    EXPECT_EQ(fix_.value("hasLinkFailed"), "false");

    fix_.fix.advance(3s);
    EXPECT_EQ(status(), "Getting a code…");
    fix_.fix.fail(ModelFixture::links, URLError::Code::timedOut);
    EXPECT_EQ(fix_.value("hasLinkFailed"), "true");
    EXPECT_EQ(status(), "The connection timed out. Vorn will retry.");
    EXPECT_EQ(fix_.value("qrPayload"), "");

    fix_.screen().startLinking();
    fix_.fix.run();
    EXPECT_EQ(status(), "Getting a code…");
    EXPECT_EQ(fix_.value("hasLinkFailed"), "false");
}

TEST_F(Screen, BeginsTheWorkOfTheFirstStep)
{
    fix_.fix.launch();
    fix_.show().start();
    fix_.fix.run();
    EXPECT_EQ(fix_.fix.asked(ModelFixture::links), 2U); // once when it was launched
}

TEST_F(Screen, NamesWhoIsSignedIn)
{
    fix_.fix.launch();
    fix_.show();
    StoredSession session = adasSession();
    session.displayName = "ådá 🦊";
    fix_.fix.linkAs(session);
    EXPECT_EQ(fix_.value("isSignedIn"), "true");
    EXPECT_EQ(fix_.value("identity"), "Signed in as ådá 🦊");
    EXPECT_EQ(fix_.value("initial"), "Å");
    EXPECT_EQ(fix_.value("stepName"), "consent");

    fix_.screen().signOut();
    EXPECT_EQ(fix_.value("isSignedIn"), "false");
    EXPECT_EQ(fix_.value("identity"), "");
    EXPECT_EQ(fix_.value("stepName"), "link");
}

TEST_F(Screen, PassesTheTicksOnAndTheConsent)
{
    fix_.fix.launchSignedIn(false);
    ScreenModel& screen = fix_.show();
    EXPECT_EQ(fix_.value("stepName"), "consent");
    EXPECT_EQ(screen.reward().amount, "the quest reward");
    fix_.fix.answer(ModelFixture::quest, questJSON());
    EXPECT_EQ(screen.reward().amount, "$12.50");
    EXPECT_TRUE(screen.consent().next.points.value(0).contains("You earn $12.50"));

    EXPECT_FALSE(screen.understandsUpload());
    EXPECT_FALSE(screen.agreesToShare());
    screen.setProperty("understandsUpload", true);
    screen.acceptConsent();
    EXPECT_TRUE(screen.understandsUpload());
    EXPECT_FALSE(screen.agreesToShare());
    EXPECT_EQ(fix_.value("stepName"), "consent");

    screen.setProperty("agreesToShare", true);
    EXPECT_TRUE(fix_.fix.model().agreesToShare());
    screen.acceptConsent();
    EXPECT_EQ(fix_.value("stepName"), "find");
}

TEST_F(Screen, ShowsWhetherMessagesCanBeRead)
{
    fix_.fix.setAccess(FullDiskAccessStatus::denied);
    fix_.fix.launchSignedIn();
    ScreenModel& screen = fix_.show();
    EXPECT_EQ(fix_.value("stepName"), "access");
    EXPECT_EQ(fix_.value("access"), "Denied");

    fix_.fix.setAccess(FullDiskAccessStatus::noDatabase);
    screen.startAccessProbe(); // without waiting for the next probe
    EXPECT_EQ(fix_.value("access"), "NoDatabase");

    fix_.fix.setAccess(FullDiskAccessStatus::granted);
    fix_.fix.advance(1500ms);
    EXPECT_EQ(fix_.value("access"), "Granted");
}

TEST_F(Screen, AsksTheDesktop)
{
    fix_.fix.launch();
    ScreenModel& screen = fix_.show();
    screen.openFullDiskAccessSettings();
    screen.revealAppInFinder();
    screen.relaunch();
    ASSERT_EQ(fix_.fix.workspace.calls.size(), 3U);
    EXPECT_THAT(fix_.fix.workspace.calls[0], ::testing::StartsWith("open "));
    EXPECT_EQ(fix_.fix.workspace.calls[1], "reveal");
    EXPECT_EQ(fix_.fix.workspace.calls[2], "relaunch");
}

TEST_F(Screen, HasEveryStepOfTheModel)
{
    fix_.fix.launchSignedIn();
    ScreenModel& screen = fix_.show();
    const std::vector<const char*> names = {"link", "consent", "access", "find", "upload", "done"};
    EXPECT_EQ(fix_.value("stepCount"), "6");
    for (std::size_t index = 0; index < names.size(); ++index) {
        fix_.fix.model().go(static_cast<Step>(index));
        EXPECT_EQ(fix_.value("step"), std::to_string(index));
        EXPECT_EQ(fix_.value("stepName"), names.at(index));
        EXPECT_EQ(fix_.value("position"), fmt::format("Step {} of 6", index + 1));
        EXPECT_NE(screen.text().title, "");
    }
}

TEST_F(Screen, LeadsBackToConsentAndToTheChat)
{
    fix_.fix.launchSignedIn();
    ScreenModel& screen = fix_.show();
    screen.backToConsent();
    EXPECT_EQ(fix_.fix.model().step(), Step::consent);
    screen.lookForChat();
    EXPECT_EQ(fix_.fix.model().step(), Step::find);
}

} // namespace
} // namespace vorn
