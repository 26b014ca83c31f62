#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/VornMacCore/Client/ScriptedKeychain.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::adasSession;
using testing::approvalJSON;
using ::testing::ElementsAre;
using testing::linkJSON;
using testing::ModelFixture;
using testing::pollJSON;

const LinkPhase loading = phase::Loading{};
const LinkPhase showing = phase::Showing{};
const LinkPhase scanned = phase::Scanned{};
const LinkPhase rejected = phase::Rejected{};

LinkPhase failed(const std::string& text)
{
    return phase::Failed{text};
}

class Linking : public ::testing::Test {
protected:
    /// The code has arrived and waits for the phone.
    void showCode(const std::string& json = linkJSON())
    {
        fix_.launch();
        fix_.runAll(); // a keychain is read in the background first
        fix_.answer(ModelFixture::links, json);
    }

    ModelFixture fix_;
};

TEST_F(Linking, AsksForACodeAndShowsIt)
{
    AppModel& model = fix_.launch();
    EXPECT_EQ(model.linkPhase(), loading);
    EXPECT_EQ(model.qrPayload(), std::nullopt);
    fix_.answer(ModelFixture::links, linkJSON());
    EXPECT_EQ(model.linkPhase(), showing);
    EXPECT_EQ(model.qrPayload(), testing::linkPayload);
    EXPECT_EQ(model.linkExpiresAt(), fix_.clock.date() + 15min);
    EXPECT_THAT(fix_.http->summaries(), ElementsAre(ModelFixture::links));
}

struct Interval {
    std::int64_t milliseconds;
    Clock::Duration expected;
};

class PollInterval : public Linking, public ::testing::WithParamInterface<Interval> {};

TEST_P(PollInterval, IsTheServicesButASecondAtLeast)
{
    showCode(linkJSON(GetParam().milliseconds));
    for (std::size_t poll = 1; poll <= 3; ++poll) {
        fix_.advance(GetParam().expected - 1ns);
        EXPECT_EQ(fix_.asked(ModelFixture::polls), poll - 1);
        fix_.advance(1ns);
        EXPECT_EQ(fix_.asked(ModelFixture::polls), poll);
        fix_.answer(ModelFixture::polls, pollJSON("pending"));
    }
}

INSTANTIATE_TEST_SUITE_P(, PollInterval,
                         ::testing::Values(Interval{0, 1s}, Interval{250, 1s}, Interval{-5, 1s}, Interval{1000, 1s},
                                           Interval{1001, 1001ms}, Interval{3000, 3s}));

/// Answers polls until a new code is requested, and returns how long after the code's arrival that was.
Clock::Duration polledFor(ModelFixture& fix)
{
    const auto arrival = fix.clock.now();
    while (!fix.isWaiting(ModelFixture::links) || fix.isWaiting(ModelFixture::polls)) {
        fix.advance(1s);
        if (fix.isWaiting(ModelFixture::polls)) fix.answer(ModelFixture::polls, pollJSON("pending"));
    }
    return fix.clock.now() - arrival;
}

TEST_F(Linking, PollsUntilFiveSecondsAfterTheCodesEnd)
{
    showCode(linkJSON(1000, "2026-03-01T09:00:30Z"));
    EXPECT_EQ(polledFor(fix_), 35s);
    EXPECT_EQ(fix_.model().linkPhase(), loading);
}

TEST_F(Linking, PollsForTwoMinutesAndFiveSecondsWhenTheEndCannotBeRead)
{
    showCode(linkJSON(1000, "tomorrow"));
    EXPECT_EQ(fix_.model().linkExpiresAt(), std::nullopt);
    EXPECT_EQ(polledFor(fix_), 125s);
}

TEST_F(Linking, LetsASecondPassBetweenTwoCodesThatHaveExpiredOnArrival)
{
    showCode(linkJSON(1000, "2026-03-01T08:00:00Z"));
    EXPECT_EQ(fix_.asked(ModelFixture::links), 1U);
    fix_.advance(1s - 1ns);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 1U);
    fix_.advance(1ns);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 2U);
    EXPECT_EQ(fix_.asked(ModelFixture::polls), 0U);
}

TEST_F(Linking, TellsOfAScannedCodeOnce)
{
    showCode();
    fix_.changes().forget();
    for (int round = 0; round < 5; ++round) {
        fix_.advance(2s);
        fix_.answer(ModelFixture::polls, pollJSON("scanned"));
        EXPECT_EQ(fix_.model().linkPhase(), scanned);
    }
    EXPECT_EQ(fix_.changes().of("linkPhaseChanged"), 1);
}

TEST_F(Linking, ReplacesAnExpiredCodeAtOnceAndWithoutAWord)
{
    for (const char* status : {"expired", "no such status"}) {
        SCOPED_TRACE(status);
        ModelFixture fix;
        fix.launch();
        fix.answer(ModelFixture::links, linkJSON());
        fix.advance(2s);
        fix.answer(ModelFixture::polls, pollJSON(status));
        EXPECT_EQ(fix.model().linkPhase(), loading);
        EXPECT_TRUE(fix.isWaiting(ModelFixture::links));
    }
}

TEST_F(Linking, TakesAnApprovalWithoutASessionForAnExpiredCode)
{
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, pollJSON("approved"));
    EXPECT_EQ(fix_.model().session(), std::nullopt);
    EXPECT_EQ(fix_.model().step(), Step::link);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 2U);
}

TEST_F(Linking, ShowsForThreeSecondsThatThePhoneDeclined)
{
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, pollJSON("rejected"));
    EXPECT_EQ(fix_.model().linkPhase(), rejected);
    fix_.advance(3s - 1ns);
    EXPECT_EQ(fix_.model().linkPhase(), rejected);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 1U);
    fix_.advance(1ns);
    EXPECT_EQ(fix_.model().linkPhase(), loading);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 2U);
}

TEST_F(Linking, ShowsAFailureForFiveSecondsAndTriesAgainForEver)
{
    AppModel& model = fix_.launch();
    for (std::size_t round = 1; round <= 50; ++round) {
        fix_.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
        EXPECT_EQ(model.linkPhase(), failed("You're offline. Vorn will retry."));
        fix_.advance(5s - 1ns);
        EXPECT_EQ(fix_.asked(ModelFixture::links), round);
        fix_.advance(1ns);
        EXPECT_EQ(fix_.asked(ModelFixture::links), round + 1);
        EXPECT_EQ(model.linkPhase(), loading);
    }
}

TEST_F(Linking, HidesTheCodeWhenAPollFails)
{
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, testing::errorJSON("Try later.", "busy"), 503);
    EXPECT_EQ(fix_.model().linkPhase(), failed("Try later."));
    EXPECT_EQ(fix_.model().qrPayload(), std::nullopt);
}

TEST_F(Linking, SignsInWhoConfirmed)
{
    showCode();
    const auto generation = fix_.model().sessionGeneration();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, approvalJSON(adasSession()));
    EXPECT_EQ(fix_.model().session(), adasSession());
    EXPECT_EQ(fix_.tokens->load(), adasSession());
    EXPECT_EQ(fix_.model().sessionGeneration(), generation + 1);
    EXPECT_EQ(fix_.model().step(), Step::consent);
    fix_.advance(1h);
    EXPECT_EQ(fix_.asked(ModelFixture::links), 1U);
    EXPECT_EQ(fix_.asked(ModelFixture::polls), 1U);
}

TEST_F(Linking, GoesToTheSearchOfWhoHasConsentedBefore)
{
    fix_.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, approvalJSON(adasSession()));
    EXPECT_EQ(fix_.model().step(), Step::find);
}

TEST_F(Linking, GoesToTheAccessStepWithoutAccess)
{
    fix_.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
    showCode();
    fix_.setAccess(FullDiskAccessStatus::denied);
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, approvalJSON(adasSession()));
    EXPECT_EQ(fix_.model().step(), Step::access);
}

TEST_F(Linking, AdoptsNothingOnceTheStepWasLeft)
{
    showCode();
    fix_.advance(2s);
    const auto poll = fix_.http->waiting(ModelFixture::polls).value();
    fix_.changes().forget();
    fix_.model().go(Step::access);
    fix_.http->answer(poll, 200, approvalJSON(adasSession()));
    fix_.run();
    EXPECT_EQ(fix_.model().step(), Step::access);
    EXPECT_EQ(fix_.model().session(), std::nullopt);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    EXPECT_EQ(fix_.changes().counts(),
              (std::map<std::string, int>{
                  {"stepChanged", 1}, {"linkPhaseChanged", 1}, {"qrPayloadChanged", 1}, {"linkExpiresAtChanged", 1}}));
}

TEST_F(Linking, AdoptsNothingWhenTheStepIsLeftWithTheAnswerOnItsWay)
{
    showCode();
    fix_.advance(2s);
    fix_.http->answer(fix_.http->waiting(ModelFixture::polls).value(), 200, approvalJSON(adasSession()));
    fix_.model().go(Step::access);
    fix_.run();
    EXPECT_EQ(fix_.model().session(), std::nullopt);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
}

struct CodesEnd {
    const char* name;
    std::function<void(ModelFixture&)> reach;
    LinkPhase phase;
};

class EndOfACode : public Linking, public ::testing::WithParamInterface<CodesEnd> {};

TEST_P(EndOfACode, LeavesNothingOfItBehind)
{
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, pollJSON("scanned"));
    ASSERT_EQ(fix_.model().linkPhase(), scanned);
    GetParam().reach(fix_);
    EXPECT_EQ(fix_.model().linkPhase(), GetParam().phase);
    EXPECT_EQ(fix_.model().qrPayload(), std::nullopt);
    EXPECT_EQ(fix_.model().linkExpiresAt(), std::nullopt);
}

std::function<void(ModelFixture&)> answered(const std::string& poll)
{
    return [poll](ModelFixture& fix) {
        fix.advance(2s);
        fix.answer(ModelFixture::polls, poll);
    };
}

INSTANTIATE_TEST_SUITE_P(
    , EndOfACode,
    ::testing::Values(CodesEnd{"Expired", answered(pollJSON("expired")), loading},
                      CodesEnd{"Declined", answered(pollJSON("rejected")), rejected},
                      CodesEnd{"Redeemed", answered(approvalJSON(adasSession())), loading},
                      CodesEnd{"RedeemedByNobody", answered(pollJSON("approved")), loading},
                      CodesEnd{"Unanswered",
                               [](ModelFixture& fix) {
                                   fix.advance(2s);
                                   fix.fail(ModelFixture::polls, URLError::Code::timedOut);
                               },
                               failed("The connection timed out. Vorn will retry.")},
                      CodesEnd{"Left", [](ModelFixture& fix) { fix.model().go(Step::access); }, loading},
                      CodesEnd{"BegunAnew", [](ModelFixture& fix) { fix.model().startLinking(); }, loading}),
    [](const auto& info) { return info.param.name; });

TEST_F(Linking, UsesASessionThatTheKeychainDoesNotTake)
{
    const auto keychain = std::make_shared<testing::ScriptedKeychain>();
    keychain->addError = KeychainError(-61);
    fix_.store = std::make_shared<RememberingTokenStore>(
        std::make_shared<KeychainTokenStore>("app.vorn.mac", KeychainTokenStore::sessionAccount, keychain));
    showCode();
    fix_.advance(2s);
    fix_.answer(ModelFixture::polls, approvalJSON(adasSession()));
    EXPECT_EQ(fix_.model().session(), adasSession());
    EXPECT_EQ(fix_.model().step(), Step::consent);
    EXPECT_TRUE(fix_.isWaiting(std::string(ModelFixture::quest) + ", Bearer token-canary-1"));
    EXPECT_EQ(keychain->secret, std::nullopt);
    EXPECT_THAT(fix_.log.lines(), ElementsAre(::testing::StartsWith("[app] keychain save failed: ")));
}

TEST_F(Linking, HasOneJobHoweverOftenItIsBegun)
{
    fix_.launch();
    for (int round = 0; round < 5; ++round) fix_.model().startLinking();
    fix_.run();
    EXPECT_EQ(fix_.http->waiting().size(), 1U);
    EXPECT_EQ(fix_.context.runningTasks(), 1U);
}

} // namespace
} // namespace vorn
