#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

// The window around the screens.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::Not;

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
    fix.model.advance(600ms); // until it is seen
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

// A copy that is refused leads back here though the database opens: what was known of access is old by then.
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

// Access that was there before does not lead on by itself: the way back to this screen would bounce.
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

TEST(AccountMenu, ShowsWhileSomebodyIsSignedIn)
{
    WindowFixture fix;
    fix.model.launch();
    fix.settle();
    EXPECT_FALSE(fix.shows("Account"));
    fix.model.linkAs(adasSession());
    fix.settle();
    EXPECT_TRUE(fix.shows("Account"));
    const QQuickItem* menu = fix.named("Account");
    const QRectF frame = menu->mapRectToScene(menu->boundingRect());
    EXPECT_EQ(frame.top(), 36);
    EXPECT_EQ(frame.right(), fix.window().width() - 42);
    EXPECT_EQ(frame.height(), 34);
}

TEST(AccountMenu, SaysWhoIsSignedInAndSignsOut)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    EXPECT_FALSE(fix.shows("Signed in as Ada"));
    fix.click("Account");
    EXPECT_TRUE(fix.shows("Signed in as Ada"));
    fix.click("Sign out of this Mac");
    EXPECT_EQ(fix.model.model().step(), Step::link);
    EXPECT_FALSE(fix.model.model().session());
    EXPECT_THAT(fix.words(), Contains("Link your phone")); // at once
    EXPECT_FALSE(fix.shows("Account"));
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
    EXPECT_FALSE(fix.shows("Signed in as Ada"));
}

TEST(AccountMenu, ClosesWhenTheSessionEnds)
{
    WindowFixture fix;
    play(fix, "4-find-loading");
    fix.click("Account");
    ASSERT_TRUE(fix.shows("Sign out of this Mac"));
    fix.model.refuse(ModelFixture::quest, 401);
    fix.model.refuse(ModelFixture::refreshes, 401);
    fix.settle();
    ASSERT_EQ(fix.model.model().step(), Step::link);
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
    EXPECT_FALSE(fix.shows("Signed in as "));
}

TEST(AccountMenu, LeavesTheKeyboardToTheScreenAfterASignOut)
{
    for (const bool byKeyboard : {false, true}) {
        WindowFixture fix;
        play(fix, "4-find-found");
        if (byKeyboard) {
            fix.pressOn("Account", Qt::Key_Space);
            fix.press(Qt::Key_Return);
        } else {
            fix.click("Account");
            fix.click("Sign out of this Mac");
        }
        ASSERT_EQ(fix.model.model().step(), Step::link);
        fix.press(Qt::Key_Space);
        EXPECT_FALSE(fix.shows("Sign out of this Mac"));
        fix.model.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
        fix.settle();
        fix.press(Qt::Key_Tab);
        EXPECT_EQ(fix.focused(), "Try again");
    }
}

/// Ways in which the session ends while the account menu is open.
struct SessionEnd {
    const char* name;
    void (*end)(WindowFixture&);
};

constexpr SessionEnd sessionEnds[] = {
    {"refused",
     [](WindowFixture& fix) {
         fix.model.refuse(ModelFixture::quest, 401);
         fix.model.refuse(ModelFixture::refreshes, 401);
         fix.settle();
     }},
    {"signed out by mouse", [](WindowFixture& fix) { fix.click("Sign out of this Mac"); }},
    {"signed out by Return", [](WindowFixture& fix) { fix.press(Qt::Key_Return); }},
    {"signed out by Space", [](WindowFixture& fix) { fix.press(Qt::Key_Space); }},
    {"signed out by a reader", [](WindowFixture& fix) { fix.pressByReader("Sign out of this Mac"); }},
};

TEST(AccountMenu, LeavesTheKeyboardOnWhatIsShownHoweverTheSessionEnds)
{
    for (const SessionEnd& each : sessionEnds) {
        for (const bool byKeyboard : {false, true}) {
            SCOPED_TRACE(std::string(each.name) + (byKeyboard ? ", opened by keyboard" : ", opened by mouse"));
            WindowFixture fix;
            play(fix, "4-find-loading");
            byKeyboard ? fix.pressOn("Account", Qt::Key_Space) : fix.click("Account");
            ASSERT_TRUE(fix.shows("Sign out of this Mac"));
            each.end(fix);
            ASSERT_EQ(fix.model.model().step(), Step::link);
            EXPECT_FALSE(fix.shows("Sign out of this Mac"));
            EXPECT_FALSE(fix.shows("Account"));
            const auto* focused = fix.window().activeFocusItem();
            ASSERT_NE(focused, nullptr);
            EXPECT_TRUE(focused->isVisible() && focused->isEnabled());
            fix.press(Qt::Key_Space);
            fix.press(Qt::Key_Return);
            EXPECT_FALSE(fix.shows("Sign out of this Mac"));
            fix.model.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
            fix.settle();
            fix.press(Qt::Key_Tab);
            EXPECT_EQ(fix.focused(), "Try again");
            EXPECT_TRUE(fix.isEnabled("Try again"));
        }
    }
}

TEST(AccountMenu, SignsOutByAScreenReader)
{
    WindowFixture fix;
    play(fix, "2-consent");
    fix.pressByReader("Account");
    fix.pressByReader("Sign out of this Mac");
    EXPECT_FALSE(fix.model.model().session());
}

TEST(AccountMenu, ClosesByAClickElsewhere)
{
    WindowFixture fix;
    play(fix, "2-consent");
    fix.click("Account");
    fix.clickAt({600, 740});
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
    EXPECT_TRUE(fix.model.model().session());
}

TEST(AccountMenu, ShowsTheFirstCharacterInUpperCase)
{
    struct Case {
        const char* name;
        const char* badge;
    };
    for (const Case& row : {Case{"ada", "A"}, Case{"Ada", "A"}, Case{"éa", "É"}, Case{"e\u0301a", "E\u0301"},
                            Case{"ßa", "SS"}, Case{"7th", "7"}, Case{"🦊 fox", "🦊"},
                            Case{"👩‍🚀 ada", "👩‍🚀"}, Case{"жanna", "Ж"}, Case{"李", "李"}}) {
        SCOPED_TRACE(row.name);
        WindowFixture fix;
        StoredSession session = adasSession();
        session.displayName = row.name;
        fix.model.tokens->save(session);
        fix.model.launch();
        EXPECT_EQ(fix.words().back(), row.badge);
    }
}

TEST(AccountMenu, ManagesWithoutAName)
{
    WindowFixture fix;
    StoredSession session = adasSession();
    session.displayName = "";
    fix.model.tokens->save(session);
    fix.model.launch();
    fix.click("Account");
    EXPECT_TRUE(fix.shows("Sign out of this Mac"));
}

// Motion.

/// Consent is given in a window that may move: the fade to the next screen has begun.
class FadingWindow : public ::testing::Test {
protected:
    FadingWindow()
    {
        play(fix_, "2-consent-ready");
        animations_.pass(1000); // what the first screen moved stands still
        fix_.click("Continue");
    }
    bool showsOld() { return contains("Exactly what we upload"); }
    bool showsNew() { return contains("Looking in Messages…"); }
    bool contains(const std::string& text)
    {
        const auto words = fix_.words();
        return std::find(words.begin(), words.end(), text) != words.end();
    }

    HandDrivenAnimations animations_;
    WindowFixture fix_{WindowFixture::Motion::full};
};

TEST_F(FadingWindow, ShowsBothScreensFor220Milliseconds)
{
    EXPECT_TRUE(showsOld());
    animations_.pass(110);
    EXPECT_TRUE(showsOld());
    EXPECT_TRUE(showsNew());
    for (const DrawnText& text : drawnTexts(fix_.window())) {
        if (text.text == "Exactly what we upload") EXPECT_EQ(text.opacity, 1) << "below the other";
        if (text.text == "Looking in Messages…")
            EXPECT_NEAR(text.opacity, 0.5, 0.01) << "in the middle of a curve that is the same forth and back";
    }
    animations_.pass(100);
    EXPECT_TRUE(showsOld());
    animations_.pass(20);
    EXPECT_FALSE(showsOld());
    EXPECT_TRUE(showsNew());
}

TEST_F(FadingWindow, TakesNoInputForTheScreenThatGoes)
{
    animations_.pass(50);
    ASSERT_TRUE(showsOld());
    const QPointF place = [&] {
        for (const DrawnText& text : drawnTexts(fix_.window()))
            if (text.text == "I understand what's uploaded") return text.frame.center();
        return QPointF();
    }();
    ASSERT_FALSE(place.isNull());
    const bool before = fix_.model.model().understandsUpload();
    fix_.clickAt(place);
    EXPECT_EQ(fix_.model.model().understandsUpload(), before);
    fix_.press(Qt::Key_Space);
    fix_.press(Qt::Key_Return);
    EXPECT_EQ(fix_.model.model().understandsUpload(), before);
    EXPECT_EQ(fix_.model.model().step(), Step::find);
    EXPECT_EQ(fix_.model.asked(ModelFixture::quest), 2U) << "one on the consent screen, one to scan";
}

TEST_F(FadingWindow, GoesOnFromTheMiddleOfAFade)
{
    animations_.pass(50);
    fix_.model.model().go(Step::consent);
    fix_.settle();
    animations_.pass(50);
    fix_.model.model().go(Step::done);
    fix_.settle();
    animations_.pass(240);
    EXPECT_THAT(fix_.words(), Contains("Upload received"));
    EXPECT_FALSE(showsOld());
    EXPECT_FALSE(showsNew());
}

/// What is drawn while one screen fades to the next.
class LeavingScreen : public ::testing::Test {
protected:
    void playToTheEnd(const std::string& scene)
    {
        play(fix_, scene);
        animations_.pass(1000);
        fix_.announced();
    }
    std::vector<std::string> wordsInTheMiddle()
    {
        animations_.pass(110);
        return fix_.words();
    }

    HandDrivenAnimations animations_;
    WindowFixture fix_{WindowFixture::Motion::full};
};

TEST_F(LeavingScreen, GoesOnFinishingAfterTheUpload)
{
    playToTheEnd("5-upload-finishing");
    fix_.model.answer(ModelFixture::completes, submissionJSON("analyzing"));
    const auto words = wordsInTheMiddle();
    EXPECT_THAT(words, Contains("Finishing up…"));
    EXPECT_THAT(words, Not(Contains("Packing your chat…")));
    EXPECT_THAT(words, Contains("Upload received"));
}

TEST_F(LeavingScreen, GoesOnShowingWhatWasFoundAfterASignOut)
{
    playToTheEnd("4-find-found");
    const auto before = fix_.words();
    fix_.model.model().signOut();
    const auto words = wordsInTheMiddle();
    for (const auto& each : {"Found on this Mac", "1,290", "Perfect, thank you"}) {
        ASSERT_THAT(before, Contains(each));
        EXPECT_THAT(words, Contains(each));
    }
    EXPECT_THAT(words, Not(Contains("Reading a private copy of your Messages history…")));
}

TEST_F(LeavingScreen, GoesOnShowingWhatWasEarnedAfterASignOut)
{
    playToTheEnd("6-done-approved");
    fix_.model.model().signOut();
    const auto words = wordsInTheMiddle();
    EXPECT_THAT(words, Contains("You earned $15.00"));
    EXPECT_THAT(words, Not(Contains("You earned the quest reward")));
}

TEST_F(LeavingScreen, GoesOnShowingTheScannedCodeOnceItIsRedeemed)
{
    playToTheEnd("1-link-scanned");
    fix_.model.advance(2s);
    fix_.model.answer(ModelFixture::polls, approvalJSON(adasSession()));
    const auto words = wordsInTheMiddle();
    EXPECT_THAT(words, Contains("Scanned. Confirm Link this Mac on your phone."));
    EXPECT_THAT(words, Not(Contains("Getting a code…")));
}

TEST_F(LeavingScreen, BeginsNothingByItsButtons)
{
    playToTheEnd("1-link-failed");
    fix_.model.advance(5s);
    fix_.model.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
    fix_.settle();
    QQuickItem* button = fix_.named("Try again");
    ASSERT_NE(button, nullptr);
    fix_.model.model().go(Step::consent);
    animations_.pass(50);
    ASSERT_EQ(fix_.named("Try again"), button);
    const auto asked = fix_.model.asked(ModelFixture::links);
    doAction(button, QAccessibleActionInterface::pressAction());
    fix_.settle();
    EXPECT_EQ(fix_.model.asked(ModelFixture::links), asked);
    EXPECT_EQ(fix_.model.model().step(), Step::consent);
}

TEST(Window, ChangesScreensAtOnceWithReducedMotion)
{
    WindowFixture fix;
    play(fix, "2-consent-ready");
    fix.click("Continue");
    EXPECT_THAT(fix.words(), Contains("Looking in Messages…"));
    EXPECT_THAT(fix.words(), Not(Contains("Exactly what we upload")));
}

} // namespace
} // namespace vorn::testing
