#include "tests/VornMac/Model/AskingTokenStore.h"
#include "tests/VornMac/View/ScreenFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <functional>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::linkJSON;
using testing::ModelFixture;
using testing::openedJSON;
using ::testing::Pair;
using testing::pollJSON;
using testing::propertiesOf;
using testing::questJSON;
using testing::ScreenFixture;
using testing::submissionJSON;

class Signals : public ::testing::Test {
protected:
    /// Runs `event` and checks that exactly its changes are announced.
    void watch(const char* name, const std::function<void()>& event)
    {
        SCOPED_TRACE(name);
        const auto before = fix_.values();
        fix_.told();
        event();
        const auto after = fix_.values();
        last_ = fix_.told();
        for (const std::string signal : allSignals) {
            bool changed = false;
            for (const std::string& property : propertiesOf(signal))
                changed |= before.at(property) != after.at(property);
            EXPECT_EQ(last_.contains(signal), changed) << signal;
        }
    }

    static constexpr const char* allSignals[] = {"restorePhaseChanged",  "stepChanged",
                                                 "textChanged",          "sessionChanged",
                                                 "linkPhaseChanged",     "qrPayloadChanged",
                                                 "linkExpiresChanged",   "linkSecondsLeftChanged",
                                                 "consentChanged",       "understandsUploadChanged",
                                                 "agreesToShareChanged", "accessChanged",
                                                 "scanPhaseChanged",     "exportResultChanged",
                                                 "canUploadChanged",     "uploadBarChanged",
                                                 "rewardChanged",        "outcomeChanged"};

    ScreenFixture fix_;
    ScreenFixture::Counts last_; ///< told during the last event
};

TEST_F(Signals, TellOfEveryChangeAndOfNothingElse)
{
    ModelFixture& fix = fix_.fix;
    fix.launch();
    ScreenModel& screen = fix_.show();
    watch("a code", [&] { fix.answer(ModelFixture::links, linkJSON()); });
    watch("half a second", [&] { fix.advance(500ms); });
    watch("another", [&] { fix.advance(500ms); });
    watch("a second", [&] { fix.advance(1s); });
    watch("nothing new", [&] { fix.answer(ModelFixture::polls, pollJSON("pending")); });
    watch("two seconds", [&] { fix.advance(2s); });
    watch("signed in", [&] { fix.answer(ModelFixture::polls, testing::approvalJSON(adasSession())); });
    watch("quest known", [&] { fix.answer(ModelFixture::quest, questJSON()); });
    watch("one box", [&] { screen.setUnderstandsUpload(true); });
    watch("the same again", [&] { screen.setUnderstandsUpload(true); });
    watch("other box", [&] { screen.setAgreesToShare(true); });
    watch("consent", [&] { screen.acceptConsent(); });
    watch("the same quest", [&] { fix.answer(ModelFixture::quest, questJSON()); });
    watch("found", [&] { fix.runAll(); });
    watch("time", [&] { fix.advance(1h); });
    watch("upload", [&] { screen.upload(); });
    watch("packed", [&] { fix.runAll(); });
    watch("opened", [&] {
        fix.answer(ModelFixture::creates, openedJSON());
        fix.runAll();
    });
    watch("sent", [&] { fix.http->acknowledge(fix.http->waiting(ModelFixture::puts).value(), "\"tag-1\""); });
    watch("taken", [&] { fix.run(); });
    watch("complete", [&] { fix.answer(ModelFixture::completes, submissionJSON("analyzing")); });
    watch("time for a poll", [&] { fix.advance(5s); });
    watch("a person looks", [&] { fix.answer(ModelFixture::review, submissionJSON("review_pending")); });
    watch("time for another", [&] { fix.advance(30s); });
    watch("still", [&] { fix.answer(ModelFixture::review, submissionJSON("review_pending")); });
    watch("time for the last", [&] { fix.advance(30s); });
    watch("paid", [&] { fix.answer(ModelFixture::review, submissionJSON("approved")); });
    watch("signed out", [&] { screen.signOut(); });
}

TEST_F(Signals, TellOfTheKeychain)
{
    ModelFixture& fix = fix_.fix;
    const auto keychain = std::make_shared<testing::AskingTokenStore>();
    keychain->refusal = KeychainError(KeychainError::authFailed);
    fix.store = keychain;
    fix.launch();
    ScreenModel& screen = fix_.show();
    EXPECT_EQ(fix_.value("isRestored"), "false");
    EXPECT_EQ(fix_.screen().keychain().status.text, "");
    watch("half a second", [&] { fix.advance(500ms); });
    EXPECT_EQ(fix_.screen().keychain().status.text, "Waiting for your keychain…");
    watch("refused", [&] { fix.runAll(); });
    EXPECT_EQ(fix_.screen().keychain().retry, "Try again");
    EXPECT_EQ(fix_.screen().keychain().status.text,
              "Your keychain didn't let Vorn in, so it can't tell whether this Mac is linked.");
    watch("another try", [&] {
        screen.start();
        fix.run();
    });
    EXPECT_EQ(fix_.screen().keychain().status.text, "Waiting for your keychain…");
    watch("refused again", [&] { fix.runAll(); });
    watch("linked anew", [&] { screen.startSignedOut(); });
    EXPECT_EQ(fix_.value("isRestored"), "true");
    EXPECT_EQ(fix_.screen().keychain().status.text, "");
}

TEST_F(Signals, ComeOnceForOneChange)
{
    ModelFixture& fix = fix_.fix;
    fix.launchSignedIn();
    fix_.show();
    watch("quest known", [&] { fix.answer(ModelFixture::quest, questJSON()); });
    EXPECT_THAT(last_, ElementsAre(Pair("consentChanged", 1), Pair("rewardChanged", 1)));
    watch("found", [&] { fix.runAll(); });
    EXPECT_THAT(last_, ElementsAre(Pair("canUploadChanged", 1), Pair("exportResultChanged", 1),
                                   Pair("scanPhaseChanged", 1), Pair("textChanged", 1)));
    watch("another step", [&] { fix_.fix.model().go(Step::upload); });
    EXPECT_THAT(last_, ElementsAre(Pair("stepChanged", 1), Pair("textChanged", 1)));
    watch("the same step", [&] { fix_.fix.model().go(Step::upload); });
    EXPECT_THAT(last_, IsEmpty());
}

/// An outgoing screen must show nothing of what follows.
TEST_F(Signals, TellThatAStepIsLeftBeforeAnythingElse)
{
    ModelFixture& fix = fix_.fix;
    fix.launchDone();
    ScreenModel& screen = fix_.show();
    std::vector<std::map<std::string, std::string>> left;
    QObject::connect(&screen, &ScreenModel::stepLeft, &screen, [&] { left.push_back(fix_.values()); });
    const auto before = fix_.values();
    screen.signOut();
    EXPECT_THAT(left, ElementsAre(before));
    EXPECT_NE(fix_.values(), before);
}

TEST_F(Signals, TellOfNothingThatIsKeptAsItWas)
{
    ModelFixture& fix = fix_.fix;
    fix.launchFound();
    ScreenModel& screen = fix_.show();
    QObject owner;
    ScreenModel& kept = *screen.asItWas(&owner);
    const auto before = fix_.values();
    EXPECT_EQ(testing::valuesOf(kept), before);
    EXPECT_EQ(kept.preview()->rowCount(), 3);
    screen.signOut();
    fix.runAll();
    EXPECT_NE(fix_.values(), before);
    EXPECT_EQ(testing::valuesOf(kept), before);
    EXPECT_EQ(kept.preview()->rowCount(), 3);
}

TEST_F(Signals, BeginNothingByWhatIsKeptAsItWas)
{
    ModelFixture& fix = fix_.fix;
    fix.launchFound();
    QObject owner;
    ScreenModel& kept = *fix_.show().asItWas(&owner);
    const auto sent = fix.http->count();
    kept.start();
    kept.startLinking();
    kept.startAccessProbe();
    kept.setUnderstandsUpload(true);
    kept.setAgreesToShare(true);
    kept.acceptConsent();
    kept.upload();
    kept.openFullDiskAccessSettings();
    kept.revealAppInFinder();
    kept.relaunch();
    kept.backToConsent();
    kept.lookForChat();
    kept.signOut();
    fix.runAll();
    EXPECT_THAT(fix.changes().counts(), IsEmpty());
    EXPECT_THAT(fix.workspace.calls, IsEmpty());
    EXPECT_EQ(fix.http->count(), sent);
}

/// A screen that is created for the new step reads everything at that moment.
TEST_F(Signals, TellOfTheStepWhenTheRestIsUpToDate)
{
    ModelFixture& fix = fix_.fix;
    fix.launchSignedIn();
    ScreenModel& screen = fix_.show();
    fix.answer(ModelFixture::quest, testing::paidQuestJSON("2026-03-01T09:10:00Z"));
    fix.runAll();
    fix.advance(10min);
    std::vector<bool> seen;
    QObject::connect(&screen, &ScreenModel::stepChanged, &screen, [&] { seen.push_back(screen.canUpload()); });
    fix.model().go(Step::upload);
    EXPECT_THAT(seen, ElementsAre(true));
}

TEST_F(Signals, TellOfWhatIsFoundWhenItCanBeRead)
{
    ModelFixture& fix = fix_.fix;
    fix.launchSignedIn();
    ScreenModel& screen = fix_.show();
    std::vector<std::string> seen;
    QObject::connect(&screen, &ScreenModel::exportResultChanged, &screen, [&] {
        seen.push_back(fix_.value("statisticsValues") + " " + std::to_string(screen.preview()->rowCount()));
    });
    QObject::connect(&screen, &ScreenModel::scanPhaseChanged, &screen,
                     [&] { seen.push_back(fix_.value("isFound") + " " + fix_.value("canUpload")); });
    fix.answer(ModelFixture::quest, questJSON());
    fix.runAll();
    EXPECT_THAT(seen, ElementsAre("3 | 0 | 3 | Mar 8, 2023 – Mar 8, 2023 3", "true true"));
}

} // namespace
} // namespace vorn
