#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/sanitizers/ForeignLeaks.h"

#include <gmock/gmock.h>

// The page with everything that would be uploaded: the way to it, its content, and the way back.
namespace vorn::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* link = "See everything we upload";
constexpr const char* title = "Everything we upload Your Nimbrel chat";

bool isOpen(WindowFixture& fix)
{
    EXPECT_EQ(fix.shows(title), fix.screenModel().everything()->isOpen());
    return fix.shows(title);
}

bool showsRing(WindowFixture& fix)
{
    const auto children = fix.window().activeFocusItem()->childItems();
    return std::ranges::any_of(children, [](const QQuickItem* child) {
        return std::string_view(child->metaObject()->className()).starts_with("FocusRing") && child->isVisible();
    });
}

void type(WindowFixture& fix, const QString& text)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, 0, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&fix.window(), &event);
    }
    fix.model.runAll();
    fix.settle();
}

TEST(EverythingView, LeadsBackToItsLink)
{
    for (const bool byKey : {true, false}) {
        for (const bool byEscape : {true, false}) {
            SCOPED_TRACE(::testing::Message() << "key " << byKey << ", escape " << byEscape);
            WindowFixture fix;
            play(fix, "4-find-found");
            byKey ? fix.pressOn(link, Qt::Key_Return) : fix.click(link);
            ASSERT_TRUE(isOpen(fix));
            EXPECT_EQ(fix.focused(), "Search messages");
            EXPECT_FALSE(fix.shows("Upload chat"));
            byEscape ? fix.press(Qt::Key_Escape) : fix.click("Back");
            EXPECT_FALSE(isOpen(fix));
            EXPECT_TRUE(fix.shows("Upload chat"));
            EXPECT_EQ(fix.focused(), link);
            EXPECT_EQ(showsRing(fix), byKey);
            EXPECT_EQ(fix.model.model().step(), Step::find);
        }
    }
}

TEST(EverythingView, TakesTheKeysOfTheScreenBelow)
{
    WindowFixture fix;
    play(fix, "4-find-found-in-review"); // where Ctrl+R looks again
    fix.pressOn(link, Qt::Key_Return);
    fix.press(Qt::Key_R, Qt::ControlModifier);
    fix.press(Qt::Key_Return);
    EXPECT_TRUE(isOpen(fix));
    EXPECT_TRUE(fix.screenModel().isFound());
    fix.press(Qt::Key_BracketLeft, Qt::ControlModifier);
    EXPECT_FALSE(isOpen(fix));
    EXPECT_EQ(fix.model.model().step(), Step::find);
}

TEST(EverythingView, LeadsBackToItsLinkForAReader)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    fix.named("Account")->forceActiveFocus();
    fix.pressByReader(link);
    ASSERT_TRUE(isOpen(fix));
    EXPECT_THAT(fix.announced(), Contains(title));
    fix.pressByReader("Back");
    EXPECT_EQ(fix.focused(), link);
}

TEST(EverythingView, IsReadInsteadOfTheScreenBelow)
{
    WindowFixture fix;
    play(fix, "4-find-everything");
    const auto spoken = fix.spoken();
    EXPECT_THAT(spoken, Contains("List: Messages"));
    EXPECT_THAT(spoken, Contains("Heading: Jan 13, 2026"));
    EXPECT_THAT(spoken, Contains("ListItem: You, Jan 13, 2026, 12:39:20\u202FPM · iMessage\nIs this the entrance?\n"
                                 "Photo (image/heic)"));
    EXPECT_THAT(spoken, Contains("StaticText: Reactions: 3. Hearts, thumbs and other tapbacks."));
    EXPECT_THAT(spoken, Contains("EditableText: Search messages"));
    EXPECT_THAT(spoken, Not(Contains(HasSubstr("Found on this Mac"))));
}

TEST(EverythingView, GoesFromMessageToMessageByKey)
{
    WindowFixture fix;
    play(fix, "4-find-everything");
    fix.lay();
    fix.press(Qt::Key_Down);
    EXPECT_THAT(fix.focused(), HasSubstr("When does the museum close"));
    EXPECT_TRUE(showsRing(fix));
    fix.press(Qt::Key_Down);
    EXPECT_THAT(fix.focused(), HasSubstr("At six."));
    fix.press(Qt::Key_End);
    EXPECT_THAT(fix.focused(), HasSubstr("You're welcome."));
    fix.lay();
    fix.press(Qt::Key_Up);
    fix.press(Qt::Key_Up);
    EXPECT_THAT(fix.focused(), HasSubstr("It is."));
    fix.press(Qt::Key_Home);
    EXPECT_THAT(fix.focused(), HasSubstr("When does the museum close"));
    fix.press(Qt::Key_Up);
    EXPECT_THAT(fix.focused(), HasSubstr("When does the museum close")) << "there is none before";
    fix.lay();
    fix.press(Qt::Key_PageDown);
    EXPECT_THAT(fix.focused(), Not(HasSubstr("When does the museum close")));
    fix.press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(fix.focused(), "Search messages");
}

TEST(EverythingView, SearchesAsTheUserTypes)
{
    WindowFixture fix;
    play(fix, "4-find-everything");
    fix.announced();
    type(fix, "tram");
    EXPECT_THAT(fix.words(), Contains("1 of 10 messages"));
    EXPECT_THAT(fix.words(), Contains(HasSubstr("By tram 12")));
    EXPECT_THAT(fix.words(), Not(Contains("At six.")));
    EXPECT_THAT(fix.announced(), ElementsAre("1 of 10 messages"));
    type(fix, "x");
    EXPECT_THAT(fix.words(), Contains("No message contains “tramx”."));
    EXPECT_THAT(fix.announced(), ElementsAre("0 of 10 messages"));
    fix.press(Qt::Key_Escape);
    EXPECT_TRUE(isOpen(fix)) << "Escape clears a search first";
    EXPECT_THAT(fix.words(), Contains("10 messages"));
    fix.press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen(fix));
}

TEST(EverythingView, ScrollsThroughAMessageThatIsTooHigh)
{
    WindowFixture fix;
    std::string lines;
    for (int line = 0; line < 100; ++line) lines += "line\n";
    fix.model.messages.message({.text = lines + "end", .date = std::int64_t{710'000'000'000'000'000}});
    fix.model.messages.message({.text = std::string("After it"), .date = std::int64_t{720'000'000'000'000'000}});
    fix.model.launchFound();
    fix.screenModel().everything()->open();
    fix.lay();
    fix.press(Qt::Key_Down);
    int presses = 0;
    for (; presses < 100 && fix.focused().find("After it") == std::string::npos; ++presses) {
        fix.press(Qt::Key_Down);
        fix.lay();
    }
    EXPECT_GT(presses, 20);
    EXPECT_LT(presses, 60);
    for (presses = 0; presses < 100 && fix.focused().find("Hello") == std::string::npos; ++presses) {
        fix.press(Qt::Key_Up);
        fix.lay();
    }
    EXPECT_GT(presses, 20);
    EXPECT_LT(presses, 60);
}

TEST(EverythingView, ClosesWithTheSession)
{
    HandDrivenAnimations animations;
    WindowFixture fix(WindowFixture::Motion::full);
    play(fix, "4-find-everything-searched");
    animations.pass(500);
    fix.model.model().signOut();
    fix.settle();
    animations.pass(500);
    EXPECT_FALSE(isOpen(fix));
    EXPECT_TRUE(fix.shows("Link your phone Your phone links this Mac"));
    EXPECT_FALSE(fix.shows("Found on this Mac Your Nimbrel chat"));
}

TEST(EverythingView, ClosesWithTheStep)
{
    WindowFixture fix;
    play(fix, "4-find-everything");
    fix.model.model().go(Step::consent);
    fix.settle();
    EXPECT_FALSE(isOpen(fix));
    EXPECT_TRUE(fix.shows("Your Nimbrel chat Exactly what we upload"));
}

TEST(EverythingView, AsksWhereACopyGoes)
{
    WindowFixture fix;
    play(fix, "4-find-everything");
    // Qt's own dialog lists its folder on a thread, so it may leak textures in any frame from here on.
    const ForeignLeaks ofQt;
    fix.click("Save a copy…");
    auto* dialog = fix.window().findChild<QObject*>("saveCopy");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->property("selectedFile").toUrl().fileName(), "vorn-nimbrel-export.zip");
    const auto path = fix.model.folder / "mine.zip";
    dialog->setProperty("selectedFile", QUrl::fromLocalFile(QString::fromStdString(path.string())));
    QMetaObject::invokeMethod(dialog, "accepted");
    QMetaObject::invokeMethod(dialog, "close");
    fix.settle();
    EXPECT_TRUE(fix.shows("Packing your chat…"));
    EXPECT_FALSE(fix.isEnabled("Save a copy…"));
    fix.model.runAll();
    fix.settle();
    EXPECT_TRUE(fix.shows("Saved as mine.zip on this Mac."));
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_THAT(fix.announced(), Contains("Saved as mine.zip on this Mac."));
}

} // namespace
} // namespace vorn::testing
