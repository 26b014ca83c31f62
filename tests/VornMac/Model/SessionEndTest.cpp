#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::approvalJSON;
using testing::belasSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::linkJSON;
using testing::ModelFixture;
using Counts = std::map<std::string, int>;

TEST(EndOfASession, EmptiesTheStore)
{
    ModelFixture fix;
    fix.launchFound();
    fix.tokens->save(adasSession(2));
    EXPECT_EQ(fix.model().endSession(), adasSession(2));
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
}

TEST(EndOfASession, KeepsANewerPairThatWasStoredBesideARefusedOne)
{
    ModelFixture fix;
    fix.launchSignedIn();
    fix.refuse(ModelFixture::quest, 401);
    fix.tokens->save(adasSession(3)); // Ada has linked again in another process
    fix.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(fix.model().session(), std::nullopt);
    EXPECT_EQ(fix.model().step(), Step::link);
    EXPECT_EQ(fix.tokens->load(), adasSession(3));
}

TEST(EndOfASession, EndsNoLaterOneByAFailedUploadThatAborts)
{
    ModelFixture fix;
    fix.launchUploading();
    fix.http->acknowledge(fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix.refuse(ModelFixture::completes, 401);
    fix.tokens->save(adasSession(3)); // Ada has linked again in another process
    fix.answer(ModelFixture::refreshes, testing::tokenPairJSON(adasSession(2)));
    ASSERT_TRUE(fix.isWaiting(ModelFixture::aborts));
    fix.model().signOut();
    fix.run();
    fix.linkAs(belasSession());
    fix.tokens->clear(); // as if no one had signed in since
    const auto generation = fix.model().sessionGeneration();
    fix.answer(ModelFixture::aborts);
    EXPECT_EQ(fix.model().session(), belasSession());
    EXPECT_EQ(fix.model().sessionGeneration(), generation);
    EXPECT_EQ(fix.model().uploadPhase(), UploadPhase(phase::Idle{}));
}

TEST(EndOfASession, ForgetsEverythingAndTellsOnce)
{
    ModelFixture fix;
    fix.launchDone();
    fix.model().setUnderstandsUpload(true);
    fix.model().setAgreesToShare(true);
    fix.changes().forget();
    const auto generation = fix.model().sessionGeneration();
    fix.model().endSession();
    const AppModel& model = fix.model();
    EXPECT_EQ(model.sessionGeneration(), generation + 1);
    EXPECT_EQ(model.step(), Step::link);
    EXPECT_EQ(model.session(), std::nullopt);
    EXPECT_EQ(model.nimbrel(), std::nullopt);
    EXPECT_EQ(model.exportResult(), nullptr);
    EXPECT_EQ(model.submission(), std::nullopt);
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Idle{}));
    EXPECT_EQ(model.uploadPhase(), UploadPhase(phase::Idle{}));
    EXPECT_FALSE(model.understandsUpload());
    EXPECT_FALSE(model.agreesToShare());
    EXPECT_EQ(fix.changes().counts(), (Counts{{"stepChanged", 1},
                                              {"sessionChanged", 1},
                                              {"nimbrelChanged", 1},
                                              {"exportResultChanged", 1},
                                              {"submissionChanged", 1},
                                              {"scanPhaseChanged", 1},
                                              {"understandsUploadChanged", 1},
                                              {"agreesToShareChanged", 1}}));
    fix.run();
    EXPECT_THAT(fix.http->waiting(), ElementsAre(ModelFixture::links));
    EXPECT_EQ(fix.context.runningTasks(), 1U);
}

TEST(EndOfASession, StopsAReviewWatchOnEveryStep)
{
    ModelFixture fix;
    fix.launchFound();
    fix.model().watchSubmission("sub-1");
    fix.run();
    fix.model().endSession();
    fix.run();
    EXPECT_EQ(fix.context.runningTasks(), 1U) << "the one that links";
}

TEST(EndOfASession, IsLeftToTheOneThatHasFailed)
{
    ModelFixture fix;
    fix.launchSignedIn(); // asks for the quest
    fix.model().signOut();
    fix.run();
    fix.answer(ModelFixture::links, linkJSON());
    fix.advance(2s);
    fix.answer(ModelFixture::polls, approvalJSON(belasSession()));
    const auto generation = fix.model().sessionGeneration();
    // Sends what the first session's request would have led to.
    fix.http->answer(0, 401);
    fix.run();
    EXPECT_EQ(fix.model().session(), belasSession());
    EXPECT_EQ(fix.model().sessionGeneration(), generation);
    EXPECT_EQ(fix.model().step(), Step::consent);
}

TEST(EndOfASession, FollowsARefusedRefresh)
{
    ModelFixture fix;
    fix.launchSignedIn();
    fix.refuse(ModelFixture::quest, 401);
    fix.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(fix.model().step(), Step::link);
    EXPECT_EQ(fix.model().session(), std::nullopt);
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_EQ(fix.model().scanPhase(), ScanPhase(phase::Idle{}));
}

TEST(EndOfASession, IsSeenThoughTheJobThatItWasRefusedToIsGone)
{
    ModelFixture fix;
    fix.launchSignedIn();
    fix.refuse(ModelFixture::quest, 401);
    fix.model().scan(); // replaces the job for which the session is being renewed
    fix.run();
    fix.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_EQ(fix.model().session(), adasSession());
    fix.refuse(ModelFixture::quest, 401);
    EXPECT_EQ(fix.model().session(), std::nullopt);
    EXPECT_EQ(fix.model().step(), Step::link);
}

TEST(EndOfASession, IsSeenThoughOnlyAnAbortWasRefused)
{
    ModelFixture fix;
    fix.launchUploading();
    fix.refuse(ModelFixture::puts, 500);
    fix.refuse(ModelFixture::aborts, 401);
    fix.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(fix.model().uploadPhase(), UploadPhase(phase::Failed{"Part 1 of the upload failed (500)."}));
    fix.model().go(Step::find);
    fix.run();
    EXPECT_EQ(fix.model().session(), std::nullopt);
    EXPECT_EQ(fix.model().step(), Step::link);
}

TEST(AnotherUser, WhoLinksWithoutASignOutSeesNothingOfTheFirst)
{
    ModelFixture fix;
    fix.launchUploading();
    const auto report = fix.http->request(fix.http->waiting(ModelFixture::puts).value()).onBodyProgress;
    fix.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-bela", true);
    fix.setAccess(FullDiskAccessStatus::denied); // so that no scan begins
    fix.model().go(Step::link);
    fix.run();
    fix.linkAs(belasSession());
    report(1);
    fix.runAll();
    const AppModel& model = fix.model();
    EXPECT_EQ(model.session(), belasSession());
    EXPECT_EQ(model.step(), Step::access);
    EXPECT_EQ(model.nimbrel(), std::nullopt);
    EXPECT_EQ(model.exportResult(), nullptr);
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Idle{}));
    EXPECT_EQ(model.uploadPhase(), UploadPhase(phase::Idle{}));
    EXPECT_EQ(fix.context.runningTasks(), 1U);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

} // namespace
} // namespace vorn
