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
using testing::questJSON;
using Counts = std::map<std::string, int>;

constexpr auto adasConsent = "consent.vorn-mac-nimbrel-1.user-ada";

TEST(Start, LinksWithoutASession)
{
    ModelFixture fix;
    EXPECT_EQ(fix.launch().step(), Step::link);
    EXPECT_THAT(fix.http->waiting(), ElementsAre(ModelFixture::links));
}

TEST(Start, AsksForConsentThatWasNotGiven)
{
    ModelFixture fix;
    EXPECT_EQ(fix.launchSignedIn(false).step(), Step::consent);
    EXPECT_EQ(fix.model().session(), adasSession());
    EXPECT_THAT(fix.http->waiting(), ElementsAre(std::string(ModelFixture::quest) + ", Bearer token-canary-1"));
}

TEST(Start, LooksForTheChatOfWhoHasConsented)
{
    ModelFixture fix;
    EXPECT_EQ(fix.launchSignedIn().step(), Step::find);
    EXPECT_EQ(fix.model().scanPhase(), ScanPhase(phase::Loading{}));
}

TEST(Start, AsksForAccessThatIsMissing)
{
    for (const auto status : {FullDiskAccessStatus::denied, FullDiskAccessStatus::noDatabase}) {
        ModelFixture fix;
        fix.setAccess(status);
        EXPECT_EQ(fix.launchSignedIn().step(), Step::access);
        EXPECT_EQ(fix.model().access(), status);
        EXPECT_THAT(fix.http->waiting(), IsEmpty());
    }
}

TEST(Start, BeginsNothingByItself)
{
    ModelFixture fix;
    fix.tokens->save(adasSession());
    const AppModel model({&fix.context, &fix.clock, &fix.background,
                          VornAPI({APIConfiguration::productionBaseURL()}, fix.http, fix.tokens), fix.tokens, fix.http,
                          &fix.defaults, &fix.workspace, &fix.files, fix.database(), Bundle({})});
    fix.runAll();
    EXPECT_EQ(model.step(), Step::consent);
    EXPECT_EQ(fix.http->count(), 0U);
}

TEST(Steps, StopTheWorkOfLinkAccessAndDoneOnly)
{
    ModelFixture fix;
    fix.launchFound();
    AppModel& model = fix.model();

    model.go(Step::link);
    fix.run();
    EXPECT_TRUE(fix.isWaiting(ModelFixture::links));
    model.go(Step::consent);
    fix.run();
    EXPECT_FALSE(fix.isWaiting(ModelFixture::links));
    EXPECT_TRUE(fix.isWaiting(ModelFixture::quest)); // the prefetch
    model.go(Step::access);
    fix.run();
    EXPECT_TRUE(fix.isWaiting(ModelFixture::quest));
    EXPECT_EQ(fix.clock.pendingSleeps(), 1U); // the probe
    model.go(Step::upload);
    fix.run();
    EXPECT_EQ(fix.clock.pendingSleeps(), 0U);
}

TEST(Steps, LookForTheChatAgainWhenFindIsEnteredFromFind)
{
    ModelFixture fix;
    fix.launchFound();
    fix.model().go(Step::find);
    fix.run();
    EXPECT_EQ(fix.model().scanPhase(), ScanPhase(phase::Loading{}));
    EXPECT_EQ(fix.asked(ModelFixture::quest), 2U);
    EXPECT_EQ(fix.changes().of("stepChanged"), 0);
}

TEST(Consent, NeedsBothBoxes)
{
    for (const bool understands : {false, true}) {
        for (const bool agrees : {false, true}) {
            ModelFixture fix;
            fix.launchSignedIn(false);
            fix.model().setUnderstandsUpload(understands);
            fix.model().setAgreesToShare(agrees);
            fix.model().acceptConsent();
            const bool accepted = understands && agrees;
            EXPECT_EQ(fix.model().step(), accepted ? Step::find : Step::consent);
            EXPECT_EQ(fix.model().hasAcceptedConsent(), accepted);
            EXPECT_EQ(fix.defaults.booleans,
                      accepted ? (std::map<std::string, bool>{{adasConsent, true}}) : (std::map<std::string, bool>{}));
        }
    }
}

TEST(Consent, NeedsASession)
{
    ModelFixture fix;
    fix.launch();
    fix.model().setUnderstandsUpload(true);
    fix.model().setAgreesToShare(true);
    fix.model().acceptConsent();
    EXPECT_EQ(fix.model().step(), Step::link);
    EXPECT_THAT(fix.defaults.booleans, IsEmpty());
}

TEST(Consent, LeadsToTheAccessStepWithoutAccess)
{
    ModelFixture fix;
    fix.launchSignedIn(false);
    fix.setAccess(FullDiskAccessStatus::denied);
    fix.model().setUnderstandsUpload(true);
    fix.model().setAgreesToShare(true);
    fix.model().acceptConsent();
    EXPECT_EQ(fix.model().step(), Step::access);
}

TEST(Consent, IsAskedOfEveryUserOfThisMac)
{
    ModelFixture fix;
    fix.launchSignedIn(true);
    fix.model().signOut();
    fix.run();
    EXPECT_FALSE(fix.model().hasAcceptedConsent());
    fix.answer(ModelFixture::links, linkJSON());
    fix.advance(2s);
    fix.answer(ModelFixture::polls, approvalJSON(belasSession()));
    EXPECT_EQ(fix.model().step(), Step::consent);
    EXPECT_FALSE(fix.model().understandsUpload());
    EXPECT_FALSE(fix.model().agreesToShare());
}

TEST(Consent, ShowsTheBoxesOfWhoHasConsentedTicked)
{
    ModelFixture fix;
    fix.launchSignedIn();
    EXPECT_FALSE(fix.model().understandsUpload());
    fix.model().go(Step::consent);
    EXPECT_TRUE(fix.model().understandsUpload());
    EXPECT_TRUE(fix.model().agreesToShare());
}

TEST(SignOut, ReachesTheLinkStepWithoutWaitingForTheNetwork)
{
    ModelFixture fix;
    fix.launchFound();
    fix.model().signOut();
    EXPECT_EQ(fix.model().step(), Step::link);
    EXPECT_EQ(fix.model().session(), std::nullopt);
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    fix.run();
    fix.fail(ModelFixture::revokes, URLError::Code::notConnectedToInternet);
    EXPECT_EQ(fix.model().step(), Step::link);
    EXPECT_TRUE(fix.isWaiting(ModelFixture::links));
    EXPECT_EQ(fix.log.lines().size(), 1U);
}

TEST(SignOut, RevokesTheStoredSession)
{
    ModelFixture fix;
    fix.launchFound();
    fix.tokens->save(adasSession(2)); // renewed since
    fix.model().signOut();
    fix.run();
    EXPECT_TRUE(fix.isWaiting("POST /api/v1/auth/desktop/logout, Bearer token-canary-2"));
}

TEST(SignOut, RevokesTheModelsOwnSessionWhenTheStoreIsEmpty)
{
    ModelFixture fix;
    fix.launchFound();
    fix.tokens->clear();
    fix.model().signOut();
    fix.run();
    EXPECT_TRUE(fix.isWaiting("POST /api/v1/auth/desktop/logout, Bearer token-canary-1"));
}

TEST(SignOut, SendsNothingWithoutASession)
{
    ModelFixture fix;
    fix.launch();
    fix.model().signOut();
    fix.run();
    EXPECT_EQ(fix.asked(ModelFixture::revokes), 0U);
    EXPECT_EQ(fix.asked(ModelFixture::links), 2U);
}

TEST(SignOut, LeavesAnotherUsersSessionAlone)
{
    ModelFixture fix;
    fix.launchFound();
    fix.tokens->save(belasSession()); // in another process
    fix.model().signOut();
    fix.run();
    EXPECT_EQ(fix.tokens->load(), belasSession());
    EXPECT_EQ(fix.asked(ModelFixture::revokes), 1U);
    EXPECT_TRUE(fix.isWaiting("POST /api/v1/auth/desktop/logout, Bearer token-canary-1"));
}

TEST(SignOut, LeavesWhatAnotherProcessStoresAloneWithoutASession)
{
    ModelFixture fix;
    fix.launch();
    fix.tokens->save(belasSession());
    fix.model().signOut();
    fix.run();
    EXPECT_EQ(fix.tokens->load(), belasSession());
    EXPECT_EQ(fix.asked(ModelFixture::revokes), 0U);
}

TEST(Properties, TellOfNoChangeWithoutOne)
{
    ModelFixture fix;
    fix.launchFound();
    AppModel& model = fix.model();
    model.setUnderstandsUpload(false);
    model.setAgreesToShare(false);
    model.go(Step::find);
    fix.answer(ModelFixture::quest, questJSON());
    fix.runAll();
    EXPECT_EQ(fix.changes().counts(), (Counts{{"scanPhaseChanged", 2}, {"exportResultChanged", 1}}));
    model.setUnderstandsUpload(true);
    model.setUnderstandsUpload(true);
    EXPECT_EQ(fix.changes().of("understandsUploadChanged"), 1);
}

} // namespace
} // namespace vorn
