#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using ::testing::Contains;

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

} // namespace
} // namespace vorn::testing
