#include "VornMac/Text/ByteText.h"
#include "tests/VornMac/View/ScreenFixture.h"
#include "tests/support/ScopedEnvironment.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::ModelFixture;
using testing::openedJSON;
using testing::paidQuestJSON;
using testing::questJSON;
using testing::ScopedEnvironment;
using testing::ScreenFixture;
using testing::submissionJSON;

class UploadScreen : public ::testing::Test {
protected:
    void report(std::int64_t bytes)
    {
        const auto part = fix_.fix.http->waiting(ModelFixture::puts).value();
        fix_.fix.http->request(part).onBodyProgress(bytes);
        fix_.fix.run();
    }
    std::int64_t size()
    {
        return fix_.fix.http->request(fix_.fix.http->waiting(ModelFixture::puts).value()).body->size();
    }

    ScreenFixture fix_;
};

TEST_F(UploadScreen, FollowsTheUpload)
{
    fix_.fix.launchFound();
    ScreenModel& screen = fix_.show();
    EXPECT_EQ(screen.uploadBar().value, 0);
    screen.upload();
    EXPECT_EQ(fix_.value("stepName"), "upload");
    EXPECT_EQ(screen.text().status.text, "Packing your chat…");
    EXPECT_EQ(screen.uploadBar().value, 0);
    EXPECT_TRUE(screen.uploadBar().isBusy);
    EXPECT_EQ(screen.uploadBar().percents, "");
    EXPECT_EQ(screen.uploadBar().amounts, "");
    fix_.fix.runAll();
    fix_.fix.answer(ModelFixture::creates, openedJSON());
    fix_.fix.runAll();
    EXPECT_EQ(screen.text().status.text, "Uploading securely. Keep this window open.");
    EXPECT_EQ(screen.uploadBar().value, 0);
    EXPECT_FALSE(screen.uploadBar().isBusy);
    EXPECT_EQ(screen.uploadBar().percents, "0 %");
    const std::int64_t half = size() / 2;
    report(half);
    EXPECT_EQ(screen.text().status.text, "Uploading securely. Keep this window open.");
    EXPECT_DOUBLE_EQ(screen.uploadBar().value, static_cast<double>(half) / static_cast<double>(size()));
    report(size());
    EXPECT_EQ(screen.text().status.text, "Finishing up…");
    EXPECT_EQ(screen.uploadBar().value, 1);
    EXPECT_EQ(screen.uploadBar().percentage, "100 percent");
    EXPECT_EQ(screen.text().retry, "");
    EXPECT_EQ(screen.reward().status, "Finishing");
}

TEST_F(UploadScreen, TellsHowMuchIsSentAndHowLongItStillTakes)
{
    fix_.fix.launchUploading();
    ScreenModel& screen = fix_.show();
    const auto amounts = [&](std::int64_t sent) { return QString::fromStdString(partText(sent, size())); };
    report(size() / 100);
    EXPECT_EQ(screen.uploadBar().amounts, amounts(size() / 100)) << "nothing of the time before it can be known";
    for (int second = 2; second <= 40; ++second) {
        fix_.fix.advance(1s);
        report(size() * second / 100);
    }
    EXPECT_EQ(screen.uploadBar().amounts, amounts(size() * 40 / 100) + ", about a minute left");
    fix_.told();
    fix_.fix.advance(4999ms);
    EXPECT_EQ(screen.uploadBar().amounts, amounts(size() * 40 / 100) + ", about a minute left");
    fix_.fix.advance(1ms);
    EXPECT_EQ(screen.uploadBar().amounts, amounts(size() * 40 / 100)) << "nothing moves: nobody knows";
    EXPECT_EQ(fix_.told()["uploadBarChanged"], 1);
    report(size());
    EXPECT_EQ(screen.uploadBar().amounts, amounts(size()));
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 0U) << "nothing is watched any more";
}

TEST_F(UploadScreen, ForgetsTheTimeOfAnEarlierUpload)
{
    fix_.fix.launchUploading();
    ScreenModel& screen = fix_.show();
    for (int second = 0; second <= 10; ++second) {
        fix_.fix.advance(1s);
        report(size() * second / 100);
    }
    EXPECT_TRUE(screen.uploadBar().amounts.endsWith(" left"));
    screen.lookForChat();
    fix_.fix.answer(ModelFixture::quest, questJSON());
    fix_.fix.runAll();
    screen.upload();
    EXPECT_EQ(screen.uploadBar().amounts, "");
    fix_.fix.runAll();
    EXPECT_EQ(screen.uploadBar().percents, "0 %");
    EXPECT_FALSE(screen.uploadBar().amounts.contains("left"));
}

TEST_F(UploadScreen, ShowsAFailureAndAnEmptyBar)
{
    fix_.fix.launchUploading();
    ScreenModel& screen = fix_.show();
    report(size() / 2);
    fix_.fix.model().go(Step::upload);
    fix_.fix.http->answer(fix_.fix.http->waiting(ModelFixture::puts).value(), 400);
    fix_.fix.run();
    fix_.fix.answer(ModelFixture::aborts);
    EXPECT_EQ(screen.text().status.text, "Part 1 of the upload failed (400).");
    EXPECT_EQ(screen.text().retry, "Try again");
    EXPECT_EQ(screen.uploadBar().value, 0);
    EXPECT_FALSE(screen.uploadBar().isBusy);
    EXPECT_EQ(screen.uploadBar().percents, "");
    EXPECT_EQ(screen.uploadBar().amounts, "");
}

TEST(DoneScreen, ShowsHowTheSubmissionStands)
{
    struct Case {
        const char* status;
        const char* reason; ///< in JSON
        const char* reward; ///< in JSON
        const char* title;
        const char* earned;
        const char* line;
        RewardStanding standing;
        bool isFinal;
    };
    for (const Case& each : {
             Case{"analyzing", "null", "null", "Upload received", "$12.50", "", RewardStanding::checking, false},
             Case{"review_pending", "null", "null", "Upload received", "$12.50", "", RewardStanding::personChecking,
                  false},
             Case{"approved", "null", R"("20")", "You earned $20.00", "$20.00", "", RewardStanding::paid, true},
             Case{"approved", "null", "null", "You earned $12.50", "$12.50", "", RewardStanding::paid, true},
             Case{"rejected", R"("wrong_provider")", "null", "Not accepted", "$12.50",
                  "This upload didn't look like your Nimbrel chat.", RewardStanding::refused, true},
             Case{"rejected", "null", "null", "Not accepted", "$12.50", "This upload wasn't accepted.",
                  RewardStanding::refused, true},
             Case{"expired", "null", "null", "Upload stopped", "$12.50",
                  "The upload didn't finish. Try again from your chat.", RewardStanding::stopped, true},
             Case{"from the future", R"("wrong_provider")", "null", "Upload received", "$12.50", "",
                  RewardStanding::checking, false},
         }) {
        SCOPED_TRACE(each.status);
        ScreenFixture fix;
        fix.fix.launchUploading();
        ScreenModel& screen = fix.show();
        fix.fix.http->acknowledge(fix.fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
        fix.fix.run();
        fix.fix.answer(
            ModelFixture::completes,
            fmt::format(
                R"({{"id":"sub-1","questId":"quest-1","status":"{}","rejectionReasonKey":{},"rewardUsd":{},"assetsRemaining":0}})",
                each.status, each.reason, each.reward));
        EXPECT_EQ(fix.value("stepName"), "done");
        EXPECT_EQ(screen.text().title, each.title);
        EXPECT_EQ(screen.text().status.text, each.line);
        EXPECT_EQ(screen.reward().amount, each.earned);
        EXPECT_EQ(screen.reward().standing, static_cast<int>(each.standing));
        EXPECT_EQ(screen.isOutcomeFinal(), each.isFinal);
        EXPECT_LE(screen.text().lead.size(), 1);
    }
}

TEST(DoneScreen, HasItsMomentOnceForEachRewardThatIsPaid)
{
    ScreenFixture fix;
    fix.fix.launchDone();
    ScreenModel& screen = fix.show();
    EXPECT_FALSE(screen.takeMoment());
    fix.fix.advance(5s);
    fix.fix.answer(ModelFixture::review, submissionJSON("approved"));
    QObject leaving;
    EXPECT_FALSE(screen.asItWas(&leaving)->takeMoment()) << "what only fades out celebrates nothing";
    EXPECT_TRUE(screen.takeMoment());
    EXPECT_FALSE(screen.takeMoment());
    EXPECT_EQ(screen.countedReward(0.5), "$6.25");
    screen.lookForChat();
    fix.fix.model().go(Step::done);
    EXPECT_FALSE(screen.takeMoment()) << "it is known already";
}

TEST(DoneScreen, HasNoMomentForAnEarlierRewardWhileTheNextIsUploaded)
{
    ScreenFixture fix;
    fix.fix.launchDone();
    fix.fix.advance(5s);
    fix.fix.answer(ModelFixture::review, submissionJSON("approved"));
    fix.fix.answer(ModelFixture::quest, questJSON());
    ScreenModel& screen = fix.show();
    fix.fix.model().go(Step::upload);
    EXPECT_EQ(screen.reward().status, "Packing");
    EXPECT_FALSE(screen.isOutcomeFinal());
    EXPECT_FALSE(screen.takeMoment());
}

TEST(DoneScreen, IsAnalyzingBeforeAnythingIsKnown)
{
    ScreenFixture fix;
    fix.fix.launchFound();
    fix.show();
    fix.fix.model().go(Step::done);
    EXPECT_EQ(fix.screen().text().subtitle, "Checking your chat");
}

TEST(DoneScreen, KnowsTheNextUploadOnceTheQuestSaysIt)
{
    const ScopedEnvironment zone("TZ", "UTC");
    const ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    ScreenFixture fix;
    fix.fix.launchDone();
    ScreenModel& screen = fix.show();
    fix.fix.advance(5s);
    fix.fix.answer(ModelFixture::review, submissionJSON("approved"));
    EXPECT_EQ(screen.text().lead.size(), 1);
    fix.told();
    fix.fix.answer(ModelFixture::quest, paidQuestJSON("2026-03-31T09:00:00Z"));
    EXPECT_EQ(screen.text().lead.value(1), "Upload again on Mar 31, 2026 with your newer chats.");
    const auto told = fix.told();
    EXPECT_EQ(told.at("textChanged"), 1);
    EXPECT_FALSE(told.contains("rewardChanged"));
}

} // namespace
} // namespace vorn
