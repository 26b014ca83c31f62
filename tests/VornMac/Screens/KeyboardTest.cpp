#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <algorithm>
#include <chrono>
#include <string_view>

#include <gmock/gmock.h>

#include <QTest>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using Names = std::vector<std::string>;

/// Whether the focused control shows its focus: in itself, or around the control that it belongs to.
bool showsFocus(WindowFixture& fix)
{
    const auto isRing = [](const QQuickItem* item) {
        return std::string_view(item->metaObject()->className()).starts_with("FocusRing") && item->isVisible();
    };
    const auto* item = fix.window().activeFocusItem();
    if (item == nullptr) return false;
    return std::ranges::any_of(item->childItems(), isRing) ||
           std::ranges::any_of(item->parentItem()->childItems(), isRing);
}

/// The controls that get the focus when `key` is pressed, until the first one has it again.
Names focusOrder(WindowFixture& fix, Qt::Key key)
{
    constexpr int enough = 20;
    Names order;
    for (int presses = 0; presses < enough; ++presses) {
        fix.press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        const std::string name = fix.focused();
        if (!order.empty() && name == order.front()) return order;
        if (!name.empty()) EXPECT_TRUE(showsFocus(fix)) << name;
        order.push_back(name);
    }
    ADD_FAILURE() << "the focus does not come back to " << order.front();
    return order;
}

/// The items that can take the focus, in the order of a screen reader: controls, fields and a list's current row.
Names focusable(WindowFixture& fix)
{
    const auto reading = fix.reading();
    // A list whose rows can take the focus is not focused itself.
    const bool hasRows = std::ranges::any_of(
        reading, [](const Read& read) { return read.role == QAccessible::ListItem && read.state.focusable; });
    Names names;
    for (const Read& read : reading) {
        const bool isFurther = read.role == QAccessible::EditableText || read.role == QAccessible::ListItem ||
                               (read.role == QAccessible::List && !hasRows);
        if ((read.isControl() || isFurther) && read.state.focusable) names.push_back(read.name);
    }
    return names;
}

/// Presses Tab until `name` has the focus.
void tabTo(WindowFixture& fix, const std::string& name)
{
    for (int presses = 0; presses < 20 && fix.focused() != name; ++presses) fix.press(Qt::Key_Tab);
    EXPECT_EQ(fix.focused(), name);
    EXPECT_TRUE(showsFocus(fix)) << name;
}

TEST(Keyboard, GoesThroughEveryControlInReadingOrder)
{
    for (const Scene& scene : allScenes()) {
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        play(fix, scene.name);
        Names expected = focusable(fix);
        if (expected.empty()) continue;
        const Names order = focusOrder(fix, Qt::Key_Tab);
        std::ranges::rotate(expected, std::ranges::find(expected, order.front())); // an item may have the focus already
        EXPECT_EQ(order, expected);
    }
}

/// The visible part of `item`: inside the window, and inside everything that clips.
QRectF seenOf(const QQuickItem* item)
{
    const QRectF whole = item->mapRectToScene(item->boundingRect());
    QRectF seen = whole;
    for (const QQuickItem* each = item->parentItem(); each != nullptr; each = each->parentItem()) {
        if (each->clip()) seen &= each->mapRectToScene(each->clipRect());
    }
    return seen & QRectF(QPointF(), item->window()->size());
}

// In the smallest window and with large text, forms scroll.
TEST(Keyboard, ComesToEveryControlAndSeesItWhole)
{
    for (const Scene& scene : allScenes()) {
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            SCOPED_TRACE(scene.name);
            WindowFixture fix;
            play(fix, scene.name);
            Appearance::shared().setTextScale(1.5);
            fix.window().resize(fix.window().minimumSize());
            fix.lay();
            Names visited;
            for (int presses = 0; presses < 12; ++presses) {
                fix.press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
                const std::string name = fix.focused();
                if (name.empty()) continue;
                visited.push_back(name);
                const QQuickItem* item = fix.window().activeFocusItem();
                EXPECT_EQ(seenOf(item), item->mapRectToScene(item->boundingRect())) << name;
                EXPECT_TRUE(showsFocus(fix)) << name;
            }
            EXPECT_THAT(visited, ::testing::IsSupersetOf(focusable(fix)));
        }
    }
}

/// Whether the focus is on a usable item that does not belong to the outgoing screen.
bool hasValidFocus(QQuickWindow& window)
{
    const QQuickItem* item = window.activeFocusItem();
    const auto* going = window.findChild<QQuickItem*>("screens")->property("going").value<QQuickItem*>();
    return item != nullptr && item->isVisible() && item->isEnabled() && item != going && !going->isAncestorOf(item);
}

TEST(Keyboard, StaysWithTheScreenThatComes)
{
    for (const auto motion : {WindowFixture::Motion::reduced, WindowFixture::Motion::full}) {
        HandDrivenAnimations animations;
        WindowFixture fix(motion);
        play(fix, "4-find-found");
        animations.pass(1000);
        // All screens that can be reached from there, one after the other.
        for (const Step step : {Step::consent, Step::access, Step::consent, Step::find, Step::access, Step::find,
                                Step::done, Step::find, Step::link, Step::consent}) {
            SCOPED_TRACE(static_cast<int>(step));
            fix.press(Qt::Key_Tab); // the focus is on an outgoing item
            fix.model.model().go(step);
            fix.settle();
            EXPECT_TRUE(hasValidFocus(fix.window())) << "while it fades";
            animations.pass(1000);
            EXPECT_TRUE(hasValidFocus(fix.window()));
            const Names reachable = focusable(fix);
            fix.press(Qt::Key_Tab);
            if (!reachable.empty()) EXPECT_THAT(reachable, ::testing::Contains(fix.focused()));
        }
    }
}

TEST(Keyboard, TakesNoAmpersandForAShortcut)
{
    WindowFixture fix;
    StoredSession session = adasSession();
    session.displayName = "Ada & Bela";
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.tokens->save(session);
    fix.model.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
    fix.model.launch();
    fix.settle();
    ASSERT_TRUE(fix.shows("Quit & Reopen Vorn"));
    QTest::keyClick(&fix.window(), Qt::Key_Space, Qt::AltModifier);
    fix.settle();
    EXPECT_THAT(fix.model.workspace.calls, ::testing::IsEmpty());
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
}

TEST(Keyboard, GoesBackTheSameWay)
{
    for (const char* scene : {"2-consent-ready", "3-access-denied", "4-find-found"}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        Names expected = focusable(fix);
        std::reverse(expected.begin(), expected.end());
        EXPECT_EQ(focusOrder(fix, Qt::Key_Backtab), expected);
    }
}

TEST(Keyboard, LeadsFromTheCodeToTheOutcomeAlone)
{
    WindowFixture fix;
    fix.model.setAccess(FullDiskAccessStatus::denied);
    fix.model.launch();
    fix.model.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
    fix.settle();
    tabTo(fix, "Try again");
    fix.press(Qt::Key_Return);
    fix.model.linkAs(adasSession());
    fix.settle();

    ASSERT_EQ(fix.model.model().step(), Step::consent);
    tabTo(fix, "I understand what's uploaded");
    fix.press(Qt::Key_Space);
    tabTo(fix, "I agree to share my Nimbrel chat");
    fix.press(Qt::Key_Space);
    tabTo(fix, "Continue");
    fix.press(Qt::Key_Return);

    ASSERT_EQ(fix.model.model().step(), Step::access);
    tabTo(fix, "Open System Settings");
    fix.press(Qt::Key_Space);
    EXPECT_EQ(fix.model.workspace.calls.size(), 1U);
    fix.model.setAccess(FullDiskAccessStatus::granted);
    fix.model.advance(1500ms); // until the next probe, and below until the result has been seen
    fix.settle();
    fix.model.advance(600ms);
    fix.settle();

    ASSERT_EQ(fix.model.model().step(), Step::find);
    while (fix.model.isWaiting(ModelFixture::quest)) fix.model.answer(ModelFixture::quest, questJSON());
    fix.model.runAll();
    fix.settle();
    tabTo(fix, "Upload chat");
    fix.press(Qt::Key_Return);

    ASSERT_EQ(fix.model.model().step(), Step::upload);
    fix.model.runAll();
    fix.model.answer(ModelFixture::creates, openedJSON());
    fix.model.runAll();
    fix.model.http->acknowledge(fix.model.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix.model.run();
    fix.model.answer(ModelFixture::completes, submissionJSON("analyzing"));
    fix.settle();

    ASSERT_EQ(fix.model.model().step(), Step::done);
    tabTo(fix, "Back to your chat");
    fix.press(Qt::Key_Return);
    ASSERT_EQ(fix.model.model().step(), Step::find);
    tabTo(fix, "Account");
    fix.press(Qt::Key_Return);
    EXPECT_TRUE(fix.shows("Sign out of this Mac"));
    fix.press(Qt::Key_Escape);
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
    tabTo(fix, "Account");
    fix.press(Qt::Key_Space);
    tabTo(fix, "Sign out of this Mac");
    fix.press(Qt::Key_Return);
    EXPECT_EQ(fix.model.model().step(), Step::link);
}

TEST(Keyboard, PressesTheFilledButtonByReturnFromAnywhere)
{
    WindowFixture fix;
    play(fix, "2-consent-ready");
    fix.press(Qt::Key_Return);
    EXPECT_NE(fix.model.model().step(), Step::consent);
}

TEST(Keyboard, PressesNoButtonThatIsOffByReturn)
{
    WindowFixture fix;
    play(fix, "2-consent-understood");
    fix.press(Qt::Key_Return);
    EXPECT_EQ(fix.model.model().step(), Step::consent);
}

TEST(Keyboard, NeverUploadsByReturnAlone)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) fix.press(key);
    EXPECT_EQ(fix.model.model().step(), Step::find);
    tabTo(fix, "Account");
    fix.press(Qt::Key_Return); // opens the menu
    fix.press(Qt::Key_Escape);
    EXPECT_EQ(fix.model.model().step(), Step::find);
}

TEST(Keyboard, LeavesTheOutcomeToWhoIsWaiting)
{
    WindowFixture fix;
    play(fix, "6-done-analyzing");
    fix.press(Qt::Key_Return);
    EXPECT_EQ(fix.model.model().step(), Step::done);
}

TEST(Keyboard, GoesBackByKey)
{
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    for (const Case& row : {Case{Qt::Key_Escape, Qt::NoModifier}, Case{Qt::Key_BracketLeft, Qt::ControlModifier}}) {
        SCOPED_TRACE(row.key);
        WindowFixture fix;
        play(fix, "4-find-found");
        fix.press(row.key, row.modifiers);
        EXPECT_EQ(fix.model.model().step(), Step::consent);
        fix.press(row.key, row.modifiers);
        EXPECT_EQ(fix.model.model().step(), Step::consent) << "there is no way back from here";
    }
}

TEST(Keyboard, TriesAgainByKey)
{
    WindowFixture fix;
    play(fix, "1-link-failed");
    fix.press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(fix.model.asked(ModelFixture::links), 2U);

    for (const char* scene : {"4-find-failed", "4-find-found-in-review"}) {
        SCOPED_TRACE(scene);
        WindowFixture found;
        play(found, scene);
        const auto asked = found.model.asked(ModelFixture::quest);
        found.press(Qt::Key_R, Qt::ControlModifier);
        EXPECT_EQ(found.model.asked(ModelFixture::quest), asked + 1);
    }
}

TEST(Keyboard, RestartsNothingByTheKeyThatTriesAgain)
{
    for (const char* scene : {"3-access-denied", "4-find-found", "1-link-showing"}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        const auto words = fix.words();
        fix.press(Qt::Key_R, Qt::ControlModifier);
        EXPECT_EQ(fix.words(), words);
        EXPECT_THAT(fix.model.workspace.calls, ::testing::IsEmpty());
    }
}

TEST(Keyboard, AsksTheKeychainAgain)
{
    WindowFixture fix;
    play(fix, "0-keychain-refused");
    fix.press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(fix.shows("Try again"));
}

TEST(Keyboard, ClosesTheMenuAndGoesBackToItsButton)
{
    WindowFixture fix;
    play(fix, "2-consent");
    tabTo(fix, "Account");
    fix.press(Qt::Key_Return);
    EXPECT_EQ(fix.focused(), "Sign out of this Mac");
    fix.press(Qt::Key_Escape);
    EXPECT_FALSE(fix.shows("Sign out of this Mac"));
    EXPECT_EQ(fix.focused(), "Account");
}

TEST(Keyboard, ShowsNoFocusForTheMouse)
{
    WindowFixture fix;
    play(fix, "2-consent");
    fix.click("I understand what's uploaded");
    EXPECT_FALSE(showsFocus(fix));
}

} // namespace
} // namespace vorn::testing
