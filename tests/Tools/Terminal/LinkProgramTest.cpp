// Linking as a user does it: the code is read from the terminal and shown to the phone.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <algorithm>
#include <csignal>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using testing::LinkedFixture;
using ::testing::Not;
using testing::Sandbox;
using testing::TerminalFixture;

TEST(LinkProgram, LinksOnceThePhoneConfirms)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"});
    const std::string link = sandbox.scan(fix.codeOn(*program));
    fix.waitForLine(*program, "Scanned. Confirm Link this Mac on your phone.");
    sandbox.approve(link);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(program->errors(), EndsWith("phone.\nLinked to Sam Rivera.\n"));
    EXPECT_EQ(program->output(), "");
}

TEST(LinkProgram, RefusesToLinkWhereNothingIsKept)
{
    const TerminalFixture fix;
    Sandbox sandbox({"--auto-approve"});
    const auto program = fix.start(sandbox.url(), {"link"});
    EXPECT_EQ(program->exitCode(), 10);
    EXPECT_EQ(program->errors(),
              "There is no keychain here, or it does not answer. The link could not be kept, so this "
              "Mac was not linked.\n");
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("device-links")));
}

TEST(LinkProgram, TakesALinkBackThatTheKeychainDidNotKeep)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"});
    const std::string link = sandbox.scan(fix.codeOn(*program));
    fix.lockKeychain();
    sandbox.approve(link);
    EXPECT_EQ(program->exitCode(), 10);
    EXPECT_THAT(program->errors(), EndsWith("The keychain didn't keep the link, so this Mac is not linked.\n"));
    sandbox.waitForLog("POST /api/v1/auth/desktop/logout 200 ");
}

TEST(LinkProgram, FitsAWindowOfUsualSize)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto window = fix.startInWindow(sandbox.url(), {"link"});
    const std::string link = sandbox.scan(fix.codeOn(*window));
    const std::string shown = window->shown();
    const std::string below = shown.substr(shown.find("Waiting for your phone\r\n") + 24);
    EXPECT_LT(std::count(below.begin(), below.end(), '\n'), 24);
    sandbox.approve(link);
    EXPECT_EQ(window->exitCode(), 0);
    window->waitFor("Linked to Sam Rivera.\r\n");
}

TEST(LinkProgram, ShowsACodeThatIsReadWithoutColours)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"}, {{"NO_COLOR", "1"}, {"TERM", "xterm-256color"}});
    EXPECT_THAT(fix.codeOn(*program), HasSubstr("vorn://link?code="));
    EXPECT_THAT(program->errors(), Not(HasSubstr("\x1B")));
    program->signal(SIGTERM);
    EXPECT_EQ(program->exitCode(), 128 + SIGTERM);
    EXPECT_THAT(program->errors(), EndsWith("\nStopped.\n"));
}

TEST(LinkProgram, ShowsANewCodeAfterADecline)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"});
    const std::string first = fix.codeOn(*program);
    sandbox.decline(sandbox.scan(first));
    fix.waitForLine(*program, "Your phone declined the link. Here's a new code.");
    sandbox.approve(sandbox.scan(fix.codeOn(*program, first)));
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(program->errors(), EndsWith("Linked to Sam Rivera.\n"));
}

TEST(LinkProgram, RenewsACodeThatExpired)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--link-lifetime", "0.1"});
    const auto program = fix.start(sandbox.url(), {"link"});
    EXPECT_NE(fix.codeOn(*program, fix.codeOn(*program)), "");
    program->signal(SIGTERM);
    EXPECT_EQ(program->exitCode(), 128 + SIGTERM);
}

TEST(LinkProgram, TriesAgainAfterAFailure)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--fault", "create-link=dropx1"});
    const auto program = fix.start(sandbox.url(), {"link"});
    fix.waitForLine(*program, "You're offline. Vorn will retry.");
    sandbox.approve(sandbox.scan(fix.codeOn(*program)));
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(program->errors(), EndsWith("Linked to Sam Rivera.\n"));
}

TEST(LinkProgram, KeepsTheSessionInTheKeychain)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"});
    sandbox.approve(sandbox.scan(fix.codeOn(*program)));
    EXPECT_EQ(program->exitCode(), 0);
    const auto session = fix.kept();
    ASSERT_TRUE(session);
    EXPECT_EQ(session->displayName, "Sam Rivera");
    EXPECT_THAT(program->errors(), Not(HasSubstr(session->token)));
    const auto again = fix.start(sandbox.url(), {"link"});
    EXPECT_EQ(again->exitCode(), 0);
    EXPECT_EQ(fix.errorsBesideTheWait(*again),
              "This Mac is already linked to Sam Rivera. Sign out first to link it anew.\n");
}

} // namespace
} // namespace vorn
