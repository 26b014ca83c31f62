#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"

#include <algorithm>
#include <string_view>

#include <gmock/gmock.h>

// The moment in which a reward is paid.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class Moment : public ::testing::Test {
protected:
    explicit Moment(WindowFixture::Motion motion) : fix_(motion) {}

    void answerReview(const std::string& status)
    {
        fix_.model.advance(5s);
        fix_.model.answer(ModelFixture::review, submissionJSON(status));
        fix_.settle();
    }
    /// The first visible item of `type`, a QML or C++ class; null if there is none.
    QQuickItem* item(std::string_view type)
    {
        const auto items = itemsBelow(fix_.window().contentItem(), [](QQuickItem* one) { return one->isVisible(); });
        const auto found = std::find_if(items.begin(), items.end(), [&](const QQuickItem* one) {
            return std::string_view(one->metaObject()->className()).starts_with(type);
        });
        return found != items.end() ? *found : nullptr;
    }
    double cardScale() { return item("RewardCard")->property("contentScale").toDouble(); }
    double checkDrawn() { return item("vorn::CheckMark")->property("progress").toDouble(); }
    double checkOpacity() { return item("vorn::CheckMark")->opacity(); }
    bool papersFall() { return item("vorn::FallingPaper") != nullptr; }
    std::string amount()
    {
        for (const DrawnText& text : drawnTexts(fix_.window()))
            if (text.text.startsWith("$")) return text.text.toStdString();
        return "";
    }
    void expectRest()
    {
        EXPECT_EQ(cardScale(), 1);
        EXPECT_EQ(checkDrawn(), 1);
        EXPECT_EQ(checkOpacity(), 1);
        EXPECT_EQ(amount(), "$12.50");
        EXPECT_FALSE(papersFall());
    }

    HandDrivenAnimations animations_;
    WindowFixture fix_;
};

class MovingMoment : public Moment {
protected:
    MovingMoment() : Moment(WindowFixture::Motion::full)
    {
        fix_.model.launchDone();
        fix_.settle();
        animations_.pass(1000);
    }
};

TEST_F(MovingMoment, SpringsCountsDrawsAndFalls)
{
    answerReview("approved");
    EXPECT_NEAR(cardScale(), 0.96, 0.01);
    EXPECT_EQ(amount(), "$0.00");
    EXPECT_NEAR(checkDrawn(), 0, 0.01);
    animations_.pass(250);
    EXPECT_GT(cardScale(), 1) << "a spring goes a little too far";
    EXPECT_TRUE(papersFall());
    animations_.pass(110);
    EXPECT_EQ(cardScale(), 1) << "after 350 ms";
    EXPECT_LT(checkDrawn(), 1);
    EXPECT_NE(amount(), "$12.50");
    animations_.pass(350);
    EXPECT_EQ(amount(), "$12.50") << "within 700 ms";
    EXPECT_EQ(checkDrawn(), 1);
    EXPECT_TRUE(papersFall());
    animations_.pass(1200);
    expectRest();
}

TEST_F(MovingMoment, CountsUpOnly)
{
    answerReview("approved");
    double before = -1;
    for (int step = 0; step < 35; ++step) {
        const double now = std::stod(amount().substr(1));
        EXPECT_GE(now, before);
        before = now;
        animations_.pass(20);
    }
    animations_.pass(2000);
    EXPECT_EQ(amount(), "$12.50");
}

TEST_F(MovingMoment, SaysTheWholeAmountOnce)
{
    fix_.announced();
    answerReview("approved");
    EXPECT_TRUE(fix_.shows("$12.50, Chat export quest")) << "for a reader it is not counted";
    animations_.pass(2000);
    EXPECT_THAT(fix_.announced(), ElementsAre("You earned $12.50 Thanks for your Nimbrel chat"));
}

TEST_F(MovingMoment, ComesOnceForAReward)
{
    answerReview("approved");
    animations_.pass(2000);
    fix_.model.answer(ModelFixture::quest, questJSON("approved")); // the card is updated again
    fix_.settle();
    expectRest();
    fix_.window().hide();
    fix_.window().show();
    fix_.settle();
    expectRest();
    fix_.model.model().go(Step::find);
    fix_.settle();
    animations_.pass(1000);
    fix_.model.model().go(Step::done);
    fix_.settle();
    animations_.pass(300);
    expectRest();
}

TEST_F(MovingMoment, IsForNoOtherOutcome)
{
    for (const char* status : {"review_pending", "rejected"}) {
        fix_.model.advance(30s);
        fix_.model.answer(ModelFixture::review, submissionJSON(status));
        fix_.settle();
        EXPECT_EQ(item("vorn::CheckMark"), nullptr);
        EXPECT_FALSE(papersFall());
        EXPECT_EQ(cardScale(), 1);
        EXPECT_EQ(amount(), "$12.50");
    }
}

class MomentOnEntry : public Moment {
protected:
    MomentOnEntry() : Moment(WindowFixture::Motion::full) {}
};

TEST_F(MomentOnEntry, ComesForAnUploadThatIsApprovedAtOnce)
{
    fix_.model.launchUploading();
    fix_.settle();
    animations_.pass(1000);
    fix_.model.http->acknowledge(fix_.model.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix_.model.run();
    fix_.model.answer(ModelFixture::completes, submissionJSON("approved"));
    fix_.settle();
    animations_.pass(300); // the other screen has gone
    EXPECT_TRUE(papersFall());
    EXPECT_NE(amount(), "$12.50");
    animations_.pass(2000);
    expectRest();
}

class QuietMoment : public Moment {
protected:
    QuietMoment() : Moment(WindowFixture::Motion::reduced)
    {
        fix_.model.launchDone();
        fix_.settle();
    }
};

TEST_F(QuietMoment, IsAFadeAndNothingElse)
{
    answerReview("approved");
    EXPECT_NEAR(checkOpacity(), 0, 0.01);
    animations_.pass(110);
    EXPECT_NEAR(checkOpacity(), 0.5, 0.1);
    EXPECT_EQ(cardScale(), 1);
    EXPECT_EQ(checkDrawn(), 1);
    EXPECT_EQ(amount(), "$12.50");
    EXPECT_FALSE(papersFall());
    animations_.pass(120);
    expectRest();
}

} // namespace
} // namespace vorn::testing
