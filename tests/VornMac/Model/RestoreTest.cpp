#include "tests/VornMac/Model/AskingTokenStore.h"
#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

// Restores the session from a keychain that is slow or refuses.
namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::AskingTokenStore;
using ::testing::IsEmpty;
using testing::ModelFixture;

class Restore : public ::testing::Test {
protected:
    Restore() { fix_.store = keychain_; }

    AppModel& launchRefused(std::int32_t status = KeychainError::interactionNotAllowed)
    {
        keychain_->refusal = KeychainError(status);
        fix_.launch();
        fix_.runAll();
        return fix_.model();
    }
    bool isAt(const RestorePhase& phase) const { return fix_.model().restorePhase() == phase; }

    std::shared_ptr<AskingTokenStore> keychain_ = std::make_shared<AskingTokenStore>();
    ModelFixture fix_;
};

TEST_F(Restore, AsksNobodyOnTheMainThread)
{
    keychain_->session = adasSession();
    fix_.launch();
    EXPECT_EQ(keychain_->asked, 0);
    EXPECT_TRUE(isAt(phase::Loading{}));
    EXPECT_THAT(fix_.http->waiting(), IsEmpty()) << "no step's work begins before it is known who is signed in";
}

TEST_F(Restore, LeadsToTheFirstStepOfWhoIsSignedIn)
{
    keychain_->session = adasSession();
    fix_.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
    fix_.launch();
    fix_.changes().forget();
    fix_.background.run();
    fix_.run();
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.model().session(), adasSession());
    EXPECT_EQ(fix_.model().step(), Step::find);
    EXPECT_EQ(fix_.changes().of("stepChanged"), 1);
    EXPECT_EQ(fix_.asked(ModelFixture::quest), 1U);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 0U);
}

TEST_F(Restore, LinksWhereNothingIsStored)
{
    fix_.launch();
    fix_.runAll();
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.model().step(), Step::link);
    EXPECT_TRUE(fix_.isWaiting(ModelFixture::links));
}

TEST_F(Restore, SaysThatItWaitsAfterHalfASecond)
{
    keychain_->session = adasSession();
    fix_.launch();
    fix_.advance(499ms);
    EXPECT_TRUE(isAt(phase::Loading{}));
    fix_.advance(1ms);
    EXPECT_TRUE(isAt(phase::Waiting{}));
    fix_.advance(30s);
    EXPECT_TRUE(isAt(phase::Waiting{}));
    EXPECT_THAT(fix_.http->waiting(), IsEmpty());
    fix_.runAll();
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.model().step(), Step::consent);
}

TEST_F(Restore, NeverSaysThatItWaitsOnceItIsDone)
{
    fix_.launch();
    fix_.runAll();
    const int told = fix_.changes().of("restorePhaseChanged");
    fix_.advance(1s);
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.changes().of("restorePhaseChanged"), told);
}

TEST_F(Restore, LeavesTheUserSignedOutWhereTheKeychainRefuses)
{
    for (const auto status : {KeychainError::interactionNotAllowed, KeychainError::userCanceled,
                              KeychainError::authFailed, KeychainError::missingEntitlement}) {
        ModelFixture fix;
        const auto keychain = std::make_shared<AskingTokenStore>();
        keychain->refusal = KeychainError(status);
        fix.store = keychain;
        fix.launch();
        fix.runAll();
        fix.advance(1s);
        EXPECT_EQ(fix.model().restorePhase(), RestorePhase(phase::Refused{}));
        EXPECT_EQ(fix.model().keychainRefusal(), KeychainError(status));
        EXPECT_EQ(fix.model().session(), std::nullopt);
        EXPECT_EQ(fix.model().step(), Step::link);
        EXPECT_THAT(fix.http->waiting(), IsEmpty());
        EXPECT_EQ(fix.log.lines().size(), 1U);
    }
}

TEST_F(Restore, LinksWhereThereIsNoKeychainToTryAgain)
{
    launchRefused(KeychainError::notAvailable);
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.model().keychainRefusal(), KeychainError(KeychainError::notAvailable));
    EXPECT_TRUE(fix_.isWaiting(ModelFixture::links));
}

TEST_F(Restore, IsTriedAgainWhenAskedTo)
{
    launchRefused();
    fix_.model().start();
    fix_.model().start(); // the user is asked once
    fix_.run();
    EXPECT_TRUE(isAt(phase::Waiting{})) << "something happens at once";
    fix_.runAll();
    EXPECT_EQ(keychain_->asked, 2);
    EXPECT_TRUE(isAt(phase::Refused{}));
    keychain_->refusal.reset();
    keychain_->session = adasSession();
    fix_.model().start();
    fix_.runAll();
    EXPECT_TRUE(isAt(phase::Idle{}));
    EXPECT_EQ(fix_.model().keychainRefusal(), std::nullopt);
    EXPECT_EQ(fix_.model().session(), adasSession());
    EXPECT_EQ(fix_.model().step(), Step::consent);
    EXPECT_EQ(fix_.asked(ModelFixture::quest), 1U);
}

TEST_F(Restore, IsForgoneByWhoLinksAgain)
{
    launchRefused();
    fix_.model().continueSignedOut();
    fix_.model().start();
    fix_.run();
    EXPECT_TRUE(isAt(phase::Idle{}));
    fix_.linkAs(adasSession());
    EXPECT_EQ(fix_.model().session(), adasSession());
    EXPECT_EQ(keychain_->asked, 1);
}

TEST_F(Restore, IsForgoneAfterARefusalAlone)
{
    fix_.launch();
    fix_.model().continueSignedOut();
    EXPECT_TRUE(isAt(phase::Loading{}));
}

TEST_F(Restore, KeepsNobodyFromQuitting)
{
    fix_.launch();
    EXPECT_EQ(fix_.background.waiting(), 1U);
    EXPECT_TRUE(fix_.context.shutDown(1min)) << "nobody has answered";
    EXPECT_EQ(keychain_->asked, 0);
}

} // namespace
} // namespace vorn
