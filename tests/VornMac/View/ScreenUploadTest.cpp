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
    EXPECT_EQ(fix_.value("uploadPhase"), "Idle");
    EXPECT_EQ(screen.uploadFraction(), 0);
    screen.upload();
    EXPECT_EQ(fix_.value("step"), "Upload");
    EXPECT_EQ(fix_.value("uploadPhase"), "Preparing");
    EXPECT_EQ(screen.uploadFraction(), 0);
    fix_.fix.runAll();
    fix_.fix.answer(ModelFixture::creates, openedJSON());
    fix_.fix.runAll();
    EXPECT_EQ(fix_.value("uploadPhase"), "Uploading");
    EXPECT_EQ(screen.uploadFraction(), 0);
    const std::int64_t half = size() / 2;
    report(half);
    EXPECT_EQ(fix_.value("uploadPhase"), "Uploading");
    EXPECT_DOUBLE_EQ(screen.uploadFraction(), static_cast<double>(half) / static_cast<double>(size()));
    report(size());
    EXPECT_EQ(fix_.value("uploadPhase"), "Finishing");
    EXPECT_EQ(screen.uploadFraction(), 1);
    EXPECT_EQ(fix_.value("uploadFailure"), "");
}

TEST_F(UploadScreen, ShowsAFailureAndAnEmptyBar)
{
    fix_.fix.launchUploading();
    ScreenModel& screen = fix_.show();
    report(size() / 2);
    fix_.screen().go(ScreenModel::Step::Upload);
    fix_.fix.http->answer(fix_.fix.http->waiting(ModelFixture::puts).value(), 400);
    fix_.fix.run();
    fix_.fix.answer(ModelFixture::aborts);
    EXPECT_EQ(fix_.value("uploadPhase"), "Failed");
    EXPECT_NE(fix_.value("uploadFailure"), "");
    EXPECT_EQ(fix_.screen().uploadFailure().toStdString(),
              std::get<phase::Failed>(fix_.fix.model().uploadPhase()).text);
    EXPECT_EQ(screen.uploadFraction(), 0);
}

TEST(DoneScreen, ShowsHowTheSubmissionStands)
{
    struct Case {
        const char* status;
        const char* reason; ///< in JSON
        const char* reward; ///< in JSON
        const char* outcome;
        const char* earned;
        const char* rejection;
    };
    for (const Case& each : {
             Case{"analyzing", "null", "null", "Analyzing", "$12.50", ""},
             Case{"review_pending", "null", "null", "ReviewPending", "$12.50", ""},
             Case{"approved", "null", R"("20")", "Approved", "$20.00", ""},
             Case{"approved", "null", "null", "Approved", "$12.50", ""},
             Case{"rejected", R"("wrong_provider")", "null", "Rejected", "$12.50",
                  "This upload didn't look like your Nimbrel chat."},
             Case{"rejected", "null", "null", "Rejected", "$12.50", "This upload wasn't accepted."},
             Case{"expired", "null", "null", "Expired", "$12.50", ""},
             Case{"from the future", R"("wrong_provider")", "null", "Analyzing", "$12.50", ""},
         }) {
        SCOPED_TRACE(each.status);
        ScreenFixture fix;
        fix.fix.launchUploading();
        fix.show();
        EXPECT_EQ(fix.value("outcome"), "Analyzing"); // of no submission
        fix.fix.http->acknowledge(fix.fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
        fix.fix.run();
        fix.fix.answer(
            ModelFixture::completes,
            fmt::format(
                R"({{"id":"sub-1","questId":"quest-1","status":"{}","rejectionReasonKey":{},"rewardUsd":{},"assetsRemaining":0}})",
                each.status, each.reason, each.reward));
        EXPECT_EQ(fix.value("step"), "Done");
        EXPECT_EQ(fix.value("outcome"), each.outcome);
        EXPECT_EQ(fix.value("earned"), each.earned);
        EXPECT_EQ(fix.value("rejection"), each.rejection);
        EXPECT_EQ(fix.value("nextUpload"), "");
    }
}

TEST(DoneScreen, KnowsTheNextUploadOnceTheQuestSaysIt)
{
    const ScopedEnvironment zone("TZ", "UTC");
    const ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    ScreenFixture fix;
    fix.fix.launchDone();
    fix.show();
    fix.fix.advance(5s);
    fix.fix.answer(ModelFixture::review, submissionJSON("approved"));
    EXPECT_EQ(fix.value("outcome"), "Approved");
    EXPECT_EQ(fix.value("nextUpload"), "");
    fix.told();
    fix.fix.answer(ModelFixture::quest, paidQuestJSON("2026-03-31T09:00:00Z"));
    EXPECT_EQ(fix.value("nextUpload"), "Mar 31, 2026");
    const auto told = fix.told();
    EXPECT_EQ(told.at("outcomeChanged"), 1);
    EXPECT_EQ(told.at("availabilityChanged"), 1);
    EXPECT_FALSE(told.contains("rewardChanged"));
}

} // namespace
} // namespace vorn
