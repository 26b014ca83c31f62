#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::Not;

/// The consent was given in a window with motion: the fade to the next screen has begun.
class FadingWindow : public ::testing::Test {
protected:
    FadingWindow()
    {
        play(fix_, "2-consent-ready");
        animations_.pass(1000); // everything of the first screen has come to rest
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

/// Frames in which one screen fades to the next.
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
