#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <ostream>

namespace vorn {
namespace {

using testing::adasSession;
using testing::Answer;
using testing::belasSession;
using ::testing::ElementsAre;
using testing::Exchange;
using ::testing::IsEmpty;
using testing::LoopbackServer;
using testing::ServiceFixture;
using testing::ServiceRequest;

TEST(Logout, SendsNothingWhenNobodyIsSignedIn)
{
    ServiceFixture fix(std::nullopt);
    fix.run(fix.api.logout());
    EXPECT_EQ(fix.server.connectionCount(), 0U);
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(Logout, TellsTheServiceAndForgets)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::revokedJSON));
    fix.run(fix.api.logout());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.logout(adasSession().token)));
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

TEST(Logout, ForgetsBeforeTheServiceIsAsked)
{
    ServiceFixture fix;
    fix.server.script([&fix](Exchange& exchange) {
        EXPECT_EQ(fix.tokens->load(), std::nullopt);
        exchange.answer(Answer::json(200, testing::revokedJSON));
    });
    fix.run(fix.api.logout());
    EXPECT_EQ(fix.requests().size(), 1U);
}

TEST(Logout, ReturnsWhenTheServiceIsNotThere)
{
    ServiceFixture fix;
    const VornAPI api(configurationOf(LoopbackServer()), fix.http, fix.tokens);
    fix.run(api.logout());
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] logout failed: Could not connect to the server."));
}

TEST(Logout, LeavesTheSessionOfWhoLinksMeanwhileAlone)
{
    ServiceFixture fix;
    fix.server.script([&fix](Exchange& exchange) {
        fix.api.adopt(belasSession());
        exchange.answer({.status = 401});
    });
    fix.server.answer(Answer::json(200, testing::tokenPairJSON(adasSession(2))));
    fix.server.answer(Answer::json(200, testing::revokedJSON));
    fix.run(fix.api.logout());
    EXPECT_EQ(fix.tokens->load(), belasSession());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.logout(adasSession(1).token), fix.refresh(adasSession(1)),
                                            fix.logout(adasSession(2).token)));
}

TEST(Logout, MayBeDoneByAClientThatIsPinnedToSomebodyElse)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::revokedJSON));
    fix.run(fix.api.pinned("user-bela").logout());
    EXPECT_THAT(fix.requests(), ElementsAre(fix.logout(adasSession().token)));
}

TEST(Revoke, LeavesTheStoreAlone)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(200, testing::revokedJSON));
    fix.run(fix.api.revoke(belasSession()));
    EXPECT_THAT(fix.requests(), ElementsAre(fix.logout(belasSession().token)));
    EXPECT_EQ(fix.tokens->load(), adasSession());
}

TEST(Revoke, OfTheStoredSessionLeavesTheStoreAloneEvenIfItIsRefused)
{
    ServiceFixture fix;
    fix.server.answer({.status = 401});
    fix.server.answer({.status = 401});
    fix.run(fix.api.revoke(adasSession()));
    EXPECT_EQ(fix.tokens->load(), adasSession());
}

TEST(Revoke, OfATokenThatCannotBeSentIsLoggedWithoutIt)
{
    ServiceFixture fix;
    fix.server.answer({.status = 401});
    fix.run(fix.api.revoke({"token-canary-1", "refresh-canary-\xFF", "user-ada", "Ada"}));
    EXPECT_EQ(fix.requests().size(), 1U);
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] logout failed: refreshToken: ill-formed UTF-8"));
}

/// The answers to the requests of one logout, and what it logs.
struct Course {
    const char* what;
    std::vector<LoopbackServer::Handler> answers;
    std::vector<std::string> lines; ///< in the log
};

std::ostream& operator<<(std::ostream& out, const Course& course)
{
    return out << course.what;
}

LoopbackServer::Handler says(const Answer& answer)
{
    return [answer](Exchange& exchange) {
        exchange.readWholeBody();
        exchange.answer(answer);
    };
}

LoopbackServer::Handler says(int status, const std::string& body = "")
{
    return says(Answer::json(status, body));
}

const LoopbackServer::Handler cuts = [](Exchange& exchange) {
    exchange.readWholeBody();
    exchange.reset();
};
const LoopbackServer::Handler mumbles = [](Exchange& exchange) {
    exchange.readWholeBody();
    exchange.send("220 mail.example.com\r\n");
    exchange.close();
};
const LoopbackServer::Handler revokes = says(200, testing::revokedJSON);
const LoopbackServer::Handler refuses = says(401, testing::errorJSON("canary", "canary"));
const LoopbackServer::Handler renews = says(200, testing::tokenPairJSON(adasSession(2)));

constexpr auto unreadable = "[api] logout failed: unreadable answer";
constexpr auto lost = "[api] logout failed: The network connection was lost.";
constexpr auto expired = "[api] logout failed: session not accepted";
constexpr auto notFound = "[api] logout failed: HTTP 404";

class CourseOfALogout : public ::testing::TestWithParam<Course> {};

TEST_P(CourseOfALogout, SavesNothingAndReturns)
{
    ServiceFixture fix;
    for (const auto& answer : GetParam().answers) fix.server.script(answer);
    fix.run(fix.api.logout());

    std::vector<ServiceRequest> expected{fix.logout(adasSession(1).token), fix.refresh(adasSession(1)),
                                         fix.logout(adasSession(2).token)};
    expected.resize(GetParam().answers.size());
    EXPECT_EQ(fix.requests(), expected);
    EXPECT_EQ(fix.log.lines(), GetParam().lines);
    EXPECT_EQ(fix.tokens->load(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    , CourseOfALogout,
    ::testing::Values(
        Course{"Revoked", {revokes}, {}}, Course{"RevokedWith201", {says(201, testing::revokedJSON)}, {}},
        Course{"NoRecord", {says(200, "{}")}, {"[api] undecodable Revoked answer", unreadable}},
        Course{"NoContent", {says({.status = 204})}, {"[api] undecodable Revoked answer", unreadable}},
        Course{"RefusedWithWords",
               {says(500, testing::errorJSON("Try later.", "busy"))},
               {"[api] logout failed: HTTP 500: Try later."}},
        Course{"RefusedWithoutWords", {says(503)}, {"[api] logout failed: HTTP 503"}},
        Course{
            "Redirected", {says({.status = 302, .headers = {{"Location", "/"}}})}, {"[api] logout failed: HTTP 302"}},
        Course{"NotThere", {says(404)}, {notFound}}, Course{"NoHTTP", {mumbles}, {unreadable}},
        Course{"Cut", {cuts}, {lost}}, Course{"RenewedAndRevoked", {refuses, renews, revokes}, {}},
        Course{"RenewalRefused", {refuses, refuses}, {}}, Course{"RenewalFails", {refuses, says(500, "x")}, {}},
        Course{"RenewalRedirected", {refuses, says(302)}, {}},
        Course{"RenewalUndecodable", {refuses, says(200, "{}")}, {"[api] undecodable TokenPair answer", unreadable}},
        Course{"RenewalNoHTTP", {refuses, mumbles}, {unreadable}}, Course{"RenewalCut", {refuses, cuts}, {lost}},
        Course{"RefusedAgain", {refuses, renews, refuses}, {expired}},
        Course{"FailsAfterRenewal", {refuses, renews, says(500)}, {"[api] logout failed: HTTP 500"}},
        Course{"NoRecordAfterRenewal",
               {refuses, renews, says(200, "[]")},
               {"[api] undecodable Revoked answer", unreadable}},
        Course{"NoHTTPAfterRenewal", {refuses, renews, mumbles}, {unreadable}},
        Course{"CutAfterRenewal", {refuses, renews, cuts}, {lost}}),
    [](const auto& info) { return info.param.what; });

TEST(Logout, LogsNoTokenThatTheServiceRepeats)
{
    ServiceFixture fix;
    const std::string token = adasSession().token;
    fix.server.answer(Answer::json(500, R"({"message":"no )" + token + " or " + token + R"("})"));
    fix.run(fix.api.logout());
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] logout failed: HTTP 500: no  or "));
}

TEST(Logout, BreaksNoLineOfTheLogWithTheServicesWords)
{
    ServiceFixture fix;
    fix.server.answer(Answer::json(500, R"({"message":"one\ntwo"})"));
    fix.run(fix.api.logout());
    EXPECT_THAT(fix.log.lines(), ElementsAre("[api] logout failed: HTTP 500: one\\ntwo"));
}

} // namespace
} // namespace vorn
