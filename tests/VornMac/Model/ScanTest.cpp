#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::belasSession;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::questJSON;
using testing::RefusingFileManager;

ScanPhase failed(const std::string& text)
{
    return phase::Failed{text};
}

class Scan : public ::testing::Test {
protected:
    /// Signed in on the find screen; the quest is requested.
    AppModel& enterFind() { return fix_.launchSignedIn(); }

    ModelFixture fix_;
};

TEST_F(Scan, FindsTheChat)
{
    AppModel& model = enterFind();
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Loading{}));
    fix_.answer(ModelFixture::quest, questJSON());
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Loading{}));
    EXPECT_EQ(model.nimbrel().value().quest.id, "quest-1");
    fix_.runAll();
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Found{}));
    ASSERT_NE(model.exportResult(), nullptr);
    EXPECT_EQ(model.exportResult()->stats().messageCount, 3);
    EXPECT_EQ(model.exportStatistics(), model.exportResult()->stats());
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Scan, FindsNothingWithoutAMessage)
{
    AppModel& model = enterFind();
    fix_.answer(ModelFixture::quest, questJSON("available", R"("+15559999999")"));
    fix_.runAll();
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::NotFound{}));
    EXPECT_NE(model.exportResult(), nullptr);
    EXPECT_FALSE(model.canUpload());
}

TEST_F(Scan, OpensNoDatabaseWithoutHandles)
{
    AppModel& model = enterFind();
    fix_.answer(ModelFixture::quest, questJSON("available", ""));
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::NotConfigured{}));
    EXPECT_EQ(fix_.background.waiting(), 0U);
    EXPECT_EQ(fix_.files.created, 0);
}

TEST_F(Scan, IsUnavailableWithoutAQuest)
{
    enterFind();
    fix_.answer(ModelFixture::quest, testing::errorJSON("no such route", "not_found"), 404);
    EXPECT_EQ(fix_.model().scanPhase(), ScanPhase(phase::Unavailable{}));
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_F(Scan, ShowsOtherFailuresOfTheService)
{
    enterFind();
    fix_.answer(ModelFixture::quest, testing::errorJSON("Try later.", "busy"), 500);
    EXPECT_EQ(fix_.model().scanPhase(), failed("Try later."));
    fix_.model().scan();
    fix_.run();
    fix_.fail(ModelFixture::quest, URLError::Code::timedOut);
    EXPECT_EQ(fix_.model().scanPhase(), failed("The connection timed out. Vorn will retry."));
}

TEST_F(Scan, SaysThatThereIsNoMessagesDatabase)
{
    enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.setAccess(FullDiskAccessStatus::noDatabase);
    fix_.runAll();
    EXPECT_EQ(fix_.model().scanPhase(), failed("Messages isn't set up on this Mac."));
}

TEST_F(Scan, GoesBackToTheAccessStepOnceAccessIsRevoked)
{
    enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.files.beforeCopy = RefusingFileManager::refuse(std::errc::operation_not_permitted);
    fix_.runAll();
    EXPECT_EQ(fix_.model().step(), Step::access);
    EXPECT_EQ(fix_.clock.pendingSleeps(), 1U); // the probe for access has begun again
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Scan, SaysThatMessagesWasBusy)
{
    enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.files.afterCopy = [](const std::filesystem::path& copy) { testing::writeFile(copy, "torn"); };
    fix_.runAll();
    EXPECT_EQ(fix_.model().scanPhase(), failed("Messages was busy. Try again in a moment."));
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Scan, LogsAFailureOfTheDatabase)
{
    fix_.messages.database().execute("DROP TABLE chat");
    enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.runAll();
    EXPECT_EQ(fix_.model().scanPhase(), failed("Vorn couldn't read your Messages history."));
    EXPECT_THAT(fix_.log.lines(), ElementsAre(HasSubstr("no such table")));
}

TEST_F(Scan, HasNoTextForOtherFailures)
{
    enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.files.beforeCreate = RefusingFileManager::refuse(std::errc::no_space_on_device);
    fix_.runAll();
    EXPECT_EQ(fix_.model().scanPhase(), failed("Something went wrong."));
}

TEST_F(Scan, WritesNothingForAUserWhoLinkedMeanwhile)
{
    AppModel& model = enterFind();
    fix_.answer(ModelFixture::quest, questJSON());
    model.signOut();
    fix_.run();
    fix_.answer(ModelFixture::links, testing::linkJSON());
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, testing::approvalJSON(belasSession()));
    fix_.runAll(); // the export of the first user's scan ends now
    EXPECT_EQ(model.session(), belasSession());
    EXPECT_EQ(model.exportResult(), nullptr);
    EXPECT_EQ(model.scanPhase(), ScanPhase(phase::Idle{}));
}

TEST_F(Scan, SaysSoWhereAnotherProgramHasLinkedSomebodyElse)
{
    AppModel& model = enterFind();
    fix_.tokens->save(belasSession());
    model.scan();
    fix_.runAll();
    EXPECT_EQ(model.scanPhase(), failed("You signed in again, so this step was stopped."));
    EXPECT_EQ(model.step(), Step::find);
    EXPECT_EQ(fix_.tokens->load(), belasSession());
}

TEST_F(Scan, HasOneJobHoweverOftenItIsBegun)
{
    enterFind();
    for (int round = 0; round < 5; ++round) fix_.model().scan();
    fix_.run();
    EXPECT_EQ(fix_.http->waiting().size(), 1U);
    EXPECT_EQ(fix_.context.runningTasks(), 1U);
}

TEST_F(Scan, StaysLoadingWithoutASession)
{
    fix_.launch();
    fix_.model().scan();
    fix_.run();
    EXPECT_EQ(fix_.model().scanPhase(), ScanPhase(phase::Loading{}));
    EXPECT_EQ(fix_.asked(ModelFixture::quest), 0U);
}

TEST_F(Scan, FreesWhatItFoundInTheBackground)
{
    fix_.launchFound();
    const std::weak_ptr<const NimbrelExportResult> found = fix_.model().exportResult();
    fix_.model().endSession();
    EXPECT_EQ(fix_.background.waiting(), 1U);
    fix_.runAll();
    EXPECT_TRUE(found.expired());
}

struct Quest {
    std::string status;
    bool canUpload;
};

class Availability : public Scan, public ::testing::WithParamInterface<Quest> {};

TEST_P(Availability, DecidesWhetherTheChatMayBeUploaded)
{
    AppModel& model = enterFind();
    EXPECT_EQ(model.availability(), std::nullopt);
    EXPECT_FALSE(model.canUpload());
    fix_.answer(ModelFixture::quest, questJSON(GetParam().status));
    EXPECT_FALSE(model.canUpload()); // nothing is found yet
    fix_.runAll();
    EXPECT_EQ(model.canUpload(), GetParam().canUpload);
}

INSTANTIATE_TEST_SUITE_P(, Availability,
                         ::testing::Values(Quest{"available", true}, Quest{"rejected", true}, Quest{"unknown", true},
                                           Quest{"submitted", false}));

TEST_F(Scan, EndsACooldownAsTimePasses)
{
    AppModel& model = enterFind();
    fix_.answer(ModelFixture::quest,
                R"({"quest":{"id":"quest-1","status":"approved","availableAt":"2026-03-01T10:00:00Z"},
                    "handles":["+15550102030"],"maxBytes":1000000})");
    fix_.runAll();
    EXPECT_TRUE(model.availability()->is<QuestAvailability::Cooldown>());
    EXPECT_FALSE(model.canUpload());
    fix_.advance(1h + 1s);
    EXPECT_TRUE(model.canUpload());
}

TEST(Prefetch, FillsInTheQuest)
{
    ModelFixture fix;
    fix.launchSignedIn(false);
    fix.answer(ModelFixture::quest, questJSON());
    EXPECT_EQ(fix.model().nimbrel().value().quest.id, "quest-1");
    EXPECT_EQ(fix.model().reward(), "$12.50");
}

TEST(Prefetch, LogsAFailureAndShowsNone)
{
    ModelFixture fix;
    fix.launchSignedIn(false);
    fix.fail(ModelFixture::quest, URLError::Code::cannotConnectToHost);
    EXPECT_EQ(fix.model().nimbrel(), std::nullopt);
    EXPECT_EQ(fix.model().reward(), "the quest reward");
    EXPECT_THAT(fix.log.lines(), ElementsAre("[app] nimbrel prefetch failed: Could not connect to the server."));
}

TEST(Access, IsLookedForEveryOneAndAHalfSeconds)
{
    ModelFixture fix;
    fix.setAccess(FullDiskAccessStatus::denied);
    AppModel& model = fix.launchSignedIn();
    EXPECT_EQ(model.access(), FullDiskAccessStatus::denied);
    fix.changes().forget();
    fix.setAccess(FullDiskAccessStatus::granted);
    fix.advance(1500ms - 1ns);
    EXPECT_EQ(model.access(), FullDiskAccessStatus::denied);
    fix.advance(1ns);
    EXPECT_EQ(model.access(), FullDiskAccessStatus::granted);
    fix.advance(1min);
    fix.setAccess(FullDiskAccessStatus::noDatabase);
    fix.advance(1500ms);
    EXPECT_EQ(model.access(), FullDiskAccessStatus::noDatabase);
    EXPECT_EQ(fix.changes().counts(), (std::map<std::string, int>{{"accessChanged", 2}}));
    EXPECT_EQ(model.step(), Step::access);
}

TEST(Access, IsNotLookedForOnceTheStepWasLeft)
{
    ModelFixture fix;
    fix.setAccess(FullDiskAccessStatus::denied);
    fix.launchSignedIn();
    fix.model().go(Step::find);
    fix.setAccess(FullDiskAccessStatus::granted);
    fix.advance(1min);
    EXPECT_EQ(fix.model().access(), FullDiskAccessStatus::denied);
}

TEST(Access, IsSeenForAMomentBeforeTheSearch)
{
    ModelFixture fix;
    fix.setAccess(FullDiskAccessStatus::denied);
    AppModel& model = fix.launchSignedIn();
    fix.setAccess(FullDiskAccessStatus::granted);
    fix.advance(1500ms);
    model.goOnOnceAccessIsSeen();
    fix.advance(600ms - 1ns);
    EXPECT_EQ(model.step(), Step::access);
    fix.advance(1ns);
    EXPECT_EQ(model.step(), Step::find);
    EXPECT_EQ(fix.clock.pendingSleeps(), 0U);
}

TEST(Access, LeadsNowhereOnceItIsGoneOrTheStepWasLeft)
{
    ModelFixture fix;
    fix.setAccess(FullDiskAccessStatus::denied);
    AppModel& model = fix.launchSignedIn();
    model.goOnOnceAccessIsSeen();
    fix.advance(1min);
    EXPECT_EQ(model.step(), Step::access) << "it is denied";
    fix.setAccess(FullDiskAccessStatus::granted);
    fix.advance(1500ms);
    model.goOnOnceAccessIsSeen();
    model.go(Step::consent);
    fix.advance(1min);
    EXPECT_EQ(model.step(), Step::consent);
    model.goOnOnceAccessIsSeen();
    fix.advance(1min);
    EXPECT_EQ(model.step(), Step::consent) << "only from the access step";
}

TEST(AccessScreen, OpensTheSettings)
{
    ModelFixture fix;
    fix.launch();
    fix.model().openFullDiskAccessSettings();
    EXPECT_THAT(fix.workspace.calls,
                ElementsAre("open x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"));
}

TEST(AccessScreen, OpensAnotherPageWhereTheFirstOneIsUnknown)
{
    ModelFixture fix;
    fix.launch();
    fix.workspace.refused = "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
    fix.model().openFullDiskAccessSettings();
    EXPECT_THAT(fix.workspace.calls,
                ElementsAre("open x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles",
                            "open x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension"));
}

TEST(AccessScreen, ShowsTheApplicationAndStartsItAnew)
{
    ModelFixture fix;
    fix.launch();
    fix.model().revealAppInFinder();
    fix.model().relaunch();
    EXPECT_THAT(fix.workspace.calls, ElementsAre("reveal", "relaunch"));
}

} // namespace
} // namespace vorn
