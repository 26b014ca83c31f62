#include "tests/VornMac/View/ScreenFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::linkJSON;
using testing::ModelFixture;
using ::testing::Pair;
using testing::pollJSON;
using testing::ScreenFixture;

constexpr const char* inTwoMinutes = "2026-03-01T09:02:00Z"; // the tests begin at nine
constexpr const char* inFourMinutes = "2026-03-01T09:04:00Z";
constexpr std::int64_t rarely = 1'000'000; // ms between polls, which are not tested here

class CodeCountdown : public ::testing::Test {
protected:
    void showCode(const std::string& expiry = inTwoMinutes, std::int64_t pollInterval = rarely)
    {
        fix_.fix.launch();
        fix_.show();
        fix_.fix.answer(ModelFixture::links, linkJSON(pollInterval, expiry));
    }
    int left() { return fix_.screen().linkSecondsLeft(); }
    void advance(Clock::Duration duration) { fix_.fix.advance(duration); }

    ScreenFixture fix_;
};

TEST_F(CodeCountdown, IsZeroBeforeACodeArrives)
{
    fix_.fix.launch();
    fix_.show();
    EXPECT_EQ(left(), 0);
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 0U);
}

TEST_F(CodeCountdown, GoesFromTwoMinutesToZeroWithASignalForEachSecond)
{
    showCode();
    EXPECT_EQ(left(), 120);
    fix_.told();
    for (int second = 119; second >= 0; --second) {
        advance(1s - 1ns);
        ASSERT_EQ(left(), second + 1);
        advance(1ns);
        ASSERT_EQ(left(), second);
        if (second > 0) ASSERT_THAT(fix_.told(), ElementsAre(Pair("linkSecondsLeftChanged", 1)));
    }
    EXPECT_THAT(fix_.told(), ElementsAre(Pair("linkExpiresChanged", 1), Pair("linkSecondsLeftChanged", 1),
                                         Pair("qrPayloadChanged", 1)));
}

// The model polls a while longer: a phone may have scanned the code at the last moment.
TEST_F(CodeCountdown, HidesTheCodeAtItsEnd)
{
    showCode();
    advance(120s - 1ns);
    EXPECT_EQ(fix_.screen().qrPayload(), testing::linkPayload);
    advance(1ns);
    EXPECT_EQ(fix_.screen().qrPayload(), "");
    EXPECT_FALSE(fix_.screen().linkExpires());
    EXPECT_TRUE(fix_.fix.model().qrPayload());
}

TEST_F(CodeCountdown, ShowsNothingOfACodeThatArrivesExpired)
{
    showCode("2026-03-01T09:00:00Z");
    EXPECT_EQ(fix_.screen().qrPayload(), "");
    EXPECT_FALSE(fix_.screen().linkExpires());
}

TEST_F(CodeCountdown, EndsAtZeroAndSleepsNoMore)
{
    showCode();
    advance(120s);
    EXPECT_EQ(left(), 0);
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 1U); // between two polls
    fix_.told();
    advance(60s);
    EXPECT_EQ(left(), 0);
    EXPECT_TRUE(fix_.told().empty());
}

TEST_F(CodeCountdown, KeepsToTheSecondsOfTheExpiry)
{
    fix_.fix.clock.advance(400ms);
    showCode();
    EXPECT_EQ(left(), 120);
    advance(599ms);
    EXPECT_EQ(left(), 120);
    advance(1ms);
    EXPECT_EQ(left(), 119);
}

TEST_F(CodeCountdown, StartsAgainWithANewCode)
{
    showCode(inTwoMinutes, 2000);
    advance(2s);
    EXPECT_EQ(left(), 118);
    fix_.fix.answer(ModelFixture::polls, pollJSON("expired"));
    fix_.fix.answer(ModelFixture::links, linkJSON(rarely, inFourMinutes));
    EXPECT_EQ(left(), 238);
    advance(1s);
    EXPECT_EQ(left(), 237);
}

TEST_F(CodeCountdown, IsZeroWhenTheCodeIsTakenBack)
{
    showCode(inTwoMinutes, 2000);
    advance(2s);
    fix_.fix.fail(ModelFixture::polls, URLError::Code::timedOut);
    EXPECT_EQ(left(), 0);
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 1U); // until the next attempt
}

TEST_F(CodeCountdown, IsZeroForACodeThatHasExpiredOrDoesNotSayWhenItWill)
{
    for (const char* expiry : {"2026-03-01T08:00:00Z", "2026-03-01T09:00:00Z", "soon"}) {
        SCOPED_TRACE(expiry);
        ScreenFixture fix;
        fix.fix.launch();
        fix.show();
        fix.fix.answer(ModelFixture::links, linkJSON(rarely, expiry));
        EXPECT_EQ(fix.screen().linkSecondsLeft(), 0);
        EXPECT_LE(fix.fix.clock.pendingSleeps(), 1U); // the model's
        EXPECT_EQ(fix.told()["linkSecondsLeftChanged"], 0);
    }
}

TEST_F(CodeCountdown, NoticesThatTheClockWasSet)
{
    showCode();
    fix_.fix.clock.setDate(fix_.fix.clock.date() + 30s);
    advance(1s);
    EXPECT_EQ(left(), 89);
    fix_.fix.clock.setDate(fix_.fix.clock.date() + 1h);
    advance(1s);
    EXPECT_EQ(left(), 0);
}

TEST_F(CodeCountdown, IsThereOnlyForACodeThatSaysWhenItExpires)
{
    showCode(inTwoMinutes, 2000);
    EXPECT_TRUE(fix_.screen().linkExpires());
    advance(2s);
    fix_.fix.answer(ModelFixture::polls, pollJSON("expired"));
    EXPECT_FALSE(fix_.screen().linkExpires());
    fix_.fix.answer(ModelFixture::links, linkJSON(rarely, "soon"));
    EXPECT_FALSE(fix_.screen().qrPayload().isEmpty());
    EXPECT_FALSE(fix_.screen().linkExpires());
}

TEST_F(CodeCountdown, EndsWithTheLinkScreen)
{
    showCode();
    advance(10s);
    fix_.fix.model().go(Step::upload); // which has no work of its own
    fix_.told();
    fix_.fix.run();
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 0U);
    advance(10s);
    EXPECT_EQ(left(), 0);
    EXPECT_TRUE(fix_.told().empty());
}

TEST_F(CodeCountdown, IsThereForAScreenThatIsMadeLate)
{
    fix_.fix.launch();
    fix_.fix.answer(ModelFixture::links, linkJSON(rarely, inTwoMinutes));
    advance(20s);
    fix_.show();
    EXPECT_EQ(left(), 100);
    advance(1s);
    EXPECT_EQ(left(), 99);
}

} // namespace
} // namespace vorn
