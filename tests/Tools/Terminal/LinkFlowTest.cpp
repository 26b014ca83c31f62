#include "Tools/Terminal/LinkFlow.h"
#include "Tools/Terminal/CommandFailure.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Sessions/InMemoryTokenStore.h"
#include "tests/support/async/ManualClock.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/Started.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

constexpr const char* create = "POST /api/v1/auth/device-links";
constexpr const char* ask = "POST /api/v1/auth/device-links/poll";
constexpr const char* pending = R"({"status":"pending"})";
constexpr const char* scanned = R"({"status":"scanned"})";

/// A service that answers when the test says so, and a clock that the test moves.
class LinkFixture {
public:
    explicit LinkFixture(LinkFlow::Patience tried = LinkFlow::Patience::untilLinked) : patience(tried)
    {
        main.runUntilIdle();
    }
    ~LinkFixture() { main.shutDown(); }
    LinkFixture(LinkFixture&&) = delete;

    void tell(int status, const std::string& body)
    {
        http->answer(http->count() - 1, status, body);
        main.runUntilIdle();
    }
    void fail(URLError::Code code)
    {
        http->fail(http->count() - 1, code);
        main.runUntilIdle();
    }
    void giveCode(const std::string& expiresAt = "2026-03-01T09:02:00Z", int pollIntervalMs = 2000)
    {
        tell(200, R"({"linkId":"link-1","pollSecret":"secret-canary-1","qrPayload":"qr-canary-1","expiresAt":")" +
                      expiresAt + R"(","pollIntervalMs":)" + std::to_string(pollIntervalMs) + "}");
    }
    void pass(Clock::Duration duration) { clock.advance(duration, main); }
    /// How many requests were sent meanwhile.
    std::size_t sentWithin(Clock::Duration duration)
    {
        const std::size_t before = http->count();
        pass(duration);
        return http->count() - before;
    }
    std::string last() const { return http->summary(http->count() - 1); }

    std::shared_ptr<testing::HeldHTTPSession> http = std::make_shared<testing::HeldHTTPSession>();
    testing::ManualClock clock; // 2026-03-01T09:00:00Z
    MainContext main;
    std::vector<LinkPhase> phases;
    bool failsToShow = false;
    CommandFailure failure{TerminalStatus::refused, "No such code."};
    LinkFlow::Patience patience;
    LinkFlow flow{
        VornAPI(APIConfiguration{APIConfiguration::productionBaseURL()}, http, std::make_shared<InMemoryTokenStore>()),
        clock,
        {"Mac", "macos", "1.0.0", "macOS 14.0"},
        [this](const LinkPhase& phase) {
            phases.push_back(phase);
            if (failsToShow && std::holds_alternative<LinkPhase::Showing>(phase.state)) throw failure;
        },
        patience};
    testing::Started<DesktopSession> linking{main, flow.run()};
};

const LinkPhase loading{LinkPhase::Loading{}};
const LinkPhase scannedPhase{LinkPhase::Scanned{}};
const LinkPhase rejected{LinkPhase::Rejected{}};

LinkPhase failed(const std::string& text)
{
    return {LinkPhase::Failed{text}};
}

LinkPhase showing()
{
    return {LinkPhase::Showing{"qr-canary-1", std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + 9h + 2min}};
}

TEST(LinkFlow, GivesTheSessionOnceThePhoneApproves)
{
    LinkFixture fix;
    fix.giveCode();
    fix.pass(2s);
    fix.tell(200, pending);
    fix.pass(2s);
    fix.tell(200, scanned);
    fix.pass(2s);
    fix.tell(200, testing::approvedPollJSON);
    ASSERT_TRUE(fix.linking.hasEnded());
    EXPECT_EQ(fix.linking.result(), testing::sampleApprovedPoll().session);
    EXPECT_THAT(fix.phases, ElementsAre(loading, showing(), scannedPhase));
    EXPECT_THAT(fix.http->summaries(), ElementsAre(create, ask, ask, ask));
}

TEST(LinkFlow, SaysOnceThatTheCodeWasScanned)
{
    LinkFixture fix;
    fix.giveCode();
    for (int poll = 0; poll < 4; ++poll) {
        fix.pass(2s);
        fix.tell(200, scanned);
    }
    EXPECT_THAT(fix.phases, ElementsAre(loading, showing(), scannedPhase));
}

TEST(LinkFlow, PollsAtMostOnceASecond)
{
    struct Case {
        int told; // milliseconds
        Clock::Duration interval;
    };
    for (const Case each : {Case{-5, 1s}, Case{0, 1s}, Case{250, 1s}, Case{1000, 1s}, Case{3000, 3s}}) {
        SCOPED_TRACE(each.told);
        LinkFixture fix;
        fix.giveCode("2026-03-01T09:02:00Z", each.told);
        EXPECT_EQ(fix.sentWithin(each.interval - 1ns), 0U);
        EXPECT_EQ(fix.sentWithin(1ns), 1U);
    }
}

TEST(LinkFlow, RenewsAnExpiredCodeAtOnce)
{
    LinkFixture fix;
    fix.giveCode();
    fix.pass(2s);
    fix.tell(200, R"({"status":"expired"})");
    EXPECT_THAT(fix.http->summaries(), ElementsAre(create, ask, create));
    EXPECT_THAT(fix.phases, ElementsAre(loading, showing(), loading));
}

TEST(LinkFlow, RenewsACodeFiveSecondsAfterItsTime)
{
    LinkFixture fix;
    fix.giveCode("2026-03-01T09:00:10Z", 1000);
    for (int second = 1; second <= 15; ++second) {
        fix.pass(1s);
        ASSERT_EQ(fix.last(), ask) << second;
        fix.tell(200, pending);
    }
    EXPECT_EQ(fix.last(), create);
}

TEST(LinkFlow, GivesACodeWithoutADateTwoMinutes)
{
    LinkFixture fix;
    fix.giveCode("soon", 60'000);
    EXPECT_EQ(std::get<LinkPhase::Showing>(fix.phases.back().state).expiresAt, std::nullopt);
    for (int minute = 1; minute <= 2; ++minute) {
        fix.pass(60s);
        fix.tell(200, pending);
        EXPECT_EQ(fix.last(), ask);
    }
    fix.pass(60s); // begun within the grace
    fix.tell(200, pending);
    EXPECT_EQ(fix.last(), create);
}

TEST(LinkFlow, AsksForACodeAtMostOnceASecond)
{
    LinkFixture fix;
    fix.giveCode("2020-01-01T00:00:00Z"); // expired when it arrives
    EXPECT_EQ(fix.http->count(), 1U);
    EXPECT_EQ(fix.sentWithin(1s - 1ns), 0U);
    EXPECT_EQ(fix.sentWithin(1ns), 1U);
    EXPECT_EQ(fix.last(), create);
}

TEST(LinkFlow, ShowsANewCodeThreeSecondsAfterADecline)
{
    LinkFixture fix;
    fix.giveCode();
    fix.pass(2s);
    fix.tell(200, R"({"status":"rejected"})");
    EXPECT_EQ(fix.phases.back(), rejected);
    EXPECT_EQ(fix.sentWithin(3s - 1ns), 0U);
    EXPECT_EQ(fix.sentWithin(1ns), 1U);
    EXPECT_THAT(fix.phases, ElementsAre(loading, showing(), rejected, loading));
}

TEST(LinkFlow, TakesAnApprovalWithoutASessionForAnExpiredCode)
{
    for (const char* answer : {R"({"status":"approved"})", R"({"status":"from the future"})"}) {
        LinkFixture fix;
        fix.giveCode();
        fix.pass(2s);
        fix.tell(200, answer);
        EXPECT_FALSE(fix.linking.hasEnded());
        EXPECT_EQ(fix.last(), create);
    }
}

TEST(LinkFlow, TriesAgainFiveSecondsAfterAnyFailure)
{
    LinkFixture fix;
    fix.fail(URLError::Code::cannotConnectToHost);
    EXPECT_EQ(fix.phases.back(), failed("Vorn can't reach the server right now."));
    EXPECT_EQ(fix.sentWithin(5s - 1ns), 0U);
    EXPECT_EQ(fix.sentWithin(1ns), 1U);
    fix.tell(500, "");
    EXPECT_EQ(fix.phases.back(), failed("The server answered 500."));
    fix.pass(5s);
    fix.giveCode();
    fix.pass(2s);
    fix.tell(200, "no JSON");
    EXPECT_EQ(fix.phases.back(), failed("The server sent an answer Vorn could not read."));
    fix.pass(5s);
    EXPECT_THAT(fix.http->summaries(), ElementsAre(create, create, create, ask, create));
}

TEST(LinkFlow, EndsWithTheFirstFailureWhereNobodyMayBe)
{
    LinkFixture fix(LinkFlow::Patience::oneCode);
    fix.fail(URLError::Code::cannotConnectToHost);
    EXPECT_EQ(testing::errorOf<URLError>(fix.linking), URLError(URLError::Code::cannotConnectToHost));
    EXPECT_THAT(fix.phases, ElementsAre(loading));
    LinkFixture polling(LinkFlow::Patience::oneCode);
    polling.giveCode();
    polling.pass(2s);
    polling.tell(500, "");
    EXPECT_TRUE(testing::errorOf<APIError>(polling.linking));
}

TEST(LinkFlow, EndsWithTheFirstCodeWhereNobodyMayBe)
{
    struct Case {
        const char* answer;
        const char* text;
    };
    for (const Case each :
         {Case{R"({"status":"expired"})", "Nobody confirmed the link in time. Link this Mac first: vorn-terminal link"},
          Case{R"({"status":"rejected"})", "Your phone declined the link."}}) {
        LinkFixture fix(LinkFlow::Patience::oneCode);
        fix.giveCode();
        fix.pass(2s);
        fix.tell(200, each.answer);
        EXPECT_EQ(testing::errorOf<CommandFailure>(fix.linking), CommandFailure(TerminalStatus::notLinked, each.text));
        EXPECT_THAT(fix.phases, ElementsAre(loading, showing()));
    }
}

TEST(LinkFlow, LinksWithOneCodeWhereNobodyMayBe)
{
    LinkFixture fix(LinkFlow::Patience::oneCode);
    fix.giveCode();
    fix.pass(2s);
    fix.tell(200, testing::approvedPollJSON);
    ASSERT_TRUE(fix.linking.hasEnded());
    EXPECT_EQ(fix.linking.result(), testing::sampleApprovedPoll().session);
}

TEST(LinkFlow, EndsWhenACodeCannotBeShown)
{
    LinkFixture fix;
    fix.failsToShow = true;
    fix.giveCode();
    EXPECT_EQ(testing::errorOf<CommandFailure>(fix.linking), fix.failure);
    EXPECT_EQ(fix.sentWithin(10s), 0U);
}

TEST(LinkFlow, EndsInsideOfAPollWhenItIsCancelled)
{
    LinkFixture fix;
    fix.giveCode();
    fix.pass(2s);
    fix.linking.cancel();
    fix.main.runUntilIdle();
    EXPECT_TRUE(testing::errorOf<Cancelled>(fix.linking));
    EXPECT_TRUE(fix.http->isCancelled(1));
    EXPECT_THAT(fix.phases, ElementsAre(loading, showing()));
}

} // namespace
} // namespace vorn
