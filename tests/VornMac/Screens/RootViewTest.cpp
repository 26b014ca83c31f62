#include "tests/VornMac/Window/Scenes.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

// The window around the screens.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;

TEST(Window, HasItsTitleAndSizes)
{
    WindowFixture fix;
    fix.model.launch();
    EXPECT_EQ(fix.window().title(), "Vorn");
    EXPECT_EQ(fix.window().size(), QSize(1180, 760));
    EXPECT_EQ(fix.window().minimumSize(), QSize(1040, 700));
    EXPECT_GE(fix.window().maximumWidth(), 16'000'000);
    EXPECT_GE(fix.window().maximumHeight(), 16'000'000);
}

TEST(Window, BeginsTheFirstStepOnce)
{
    WindowFixture fix;
    fix.model.launch();
    fix.settle();
    fix.window().hide();
    fix.window().show();
    fix.settle();
    EXPECT_EQ(fix.model.asked(ModelFixture::links), 1U);
}

TEST(Window, ScansAtOnceForARestoredSession)
{
    WindowFixture fix;
    fix.model.launchSignedIn();
    EXPECT_THAT(fix.words(), Contains("Looking in Messages…")); // in the first frame
    EXPECT_EQ(fix.model.asked(ModelFixture::quest), 1U);
}

TEST(Window, ProbesAtOnceForARestoredSession)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launchSignedIn();
    EXPECT_THAT(fix.words(), Contains("Allow Full Disk Access"));
    fix.model.setAccess(FullDiskAccessStatus::granted);
    fix.model.advance(1500ms);
    fix.settle();
    fix.model.advance(600ms); // until the user has seen it
    fix.settle();
    EXPECT_EQ(fix.model.model().step(), Step::find);
    EXPECT_THAT(fix.words(), Contains("Looking in Messages…"));
}

TEST(Window, ProbesAgainWhenTheUserComesBack)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launchSignedIn();
    fix.settle();
    fix.model.setAccess(FullDiskAccessStatus::granted);
    fix.settle();
    EXPECT_EQ(fix.model.model().step(), Step::access) << "nobody came back yet";
    emit qGuiApp->applicationStateChanged(QGuiApplication::applicationState());
    fix.settle();
    EXPECT_TRUE(fix.shows("Access granted.")) << "without waiting for the next look";
    fix.model.advance(600ms);
    EXPECT_EQ(fix.model.model().step(), Step::find);
}

TEST(Window, StaysOnTheAccessScreenWhileAccessIsMissing)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launchSignedIn();
    fix.model.setAccess(FullDiskAccessStatus::noDatabase);
    emit qGuiApp->applicationStateChanged(QGuiApplication::applicationState());
    fix.settle();
    EXPECT_EQ(fix.model.model().step(), Step::access);
    EXPECT_TRUE(
        fix.shows("Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you text Nimbrel from, "
                  "then come back."));
}

TEST(Window, LeavesNoProbeBehindWhenTheUserComesBackWithAccess)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launchSignedIn();
    fix.settle();
    fix.model.setAccess(FullDiskAccessStatus::granted);
    emit qGuiApp->applicationStateChanged(QGuiApplication::applicationState());
    fix.settle();
    fix.model.advance(600ms);
    ASSERT_EQ(fix.model.model().step(), Step::find);
    EXPECT_EQ(fix.model.clock.pendingSleeps(), 0U);
}

// A refused copy leads back here although the database opens: the earlier result of the probe is outdated.
TEST(Window, StaysOnTheAccessScreenWhereAccessWasGrantedBeforeItCame)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launchSignedIn();
    fix.settle();
    fix.click("Back");
    fix.model.setAccess(FullDiskAccessStatus::granted);
    fix.model.model().go(Step::access);
    fix.settle();
    fix.model.advance(5s);
    fix.settle();
    EXPECT_EQ(fix.model.model().step(), Step::access);
    EXPECT_TRUE(fix.isEnabled("Continue"));
    EXPECT_EQ(fix.model.asked(ModelFixture::quest), 1U) << "of the consent screen";
}

// With access that was granted before, the screen does not continue by itself: going back to it would be impossible.
TEST(Window, OffersToGoOnWhereAccessWasThereBefore)
{
    WindowFixture fix;
    play(fix, "3-access-granted");
    EXPECT_EQ(fix.model.model().step(), Step::access);
    fix.model.advance(5s);
    fix.settle();
    EXPECT_EQ(fix.model.model().step(), Step::access);
    EXPECT_TRUE(fix.isEnabled("Continue"));
}

} // namespace
} // namespace vorn::testing
