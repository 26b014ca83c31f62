// Linking, as a person does it: the code is read from the terminal and shown to the phone.
#include "tests/Tools/Terminal/TerminalFixture.h"

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

constexpr const char* lost = "The keychain doesn't keep the session here, so the link lasts for this run only.\n";

TEST(LinkProgram, LinksOnceThePhoneConfirms)
{
    const TerminalFixture fix;
    Sandbox sandbox;
    const auto program = fix.start(sandbox.url(), {"link"});
    const std::string link = sandbox.scan(fix.codeOn(*program));
    fix.waitForLine(*program, "Scanned. Confirm Link this Mac on your phone.");
    sandbox.approve(link);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(program->errors(), EndsWith(std::string("phone.\n") + lost + "Linked to Sam Rivera.\n"));
    EXPECT_EQ(program->output(), "");
}

TEST(LinkProgram, ShowsACodeThatIsReadWithoutColours)
{
    const TerminalFixture fix;
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
    const TerminalFixture fix;
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
    const TerminalFixture fix;
    Sandbox sandbox({"--link-lifetime", "1.5"});
    const auto program = fix.start(sandbox.url(), {"link"});
    const std::string first = fix.codeOn(*program);
    sandbox.approve(sandbox.scan(fix.codeOn(*program, first)));
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(program->errors(), EndsWith("Linked to Sam Rivera.\n"));
}

TEST(LinkProgram, WaitsForAServiceThatIsDown)
{
    const TerminalFixture fix;
    int port = 0;
    {
        const Sandbox gone;
        port = gone.port();
    }
    const auto program = fix.start("http://127.0.0.1:" + std::to_string(port), {"link"});
    fix.waitForLine(*program, "Vorn can't reach the server right now.");
    Sandbox sandbox({}, port);
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
    EXPECT_THAT(program->errors(), Not(HasSubstr(lost)));
    const auto session = fix.kept();
    ASSERT_TRUE(session);
    EXPECT_EQ(session->displayName, "Sam Rivera");
    EXPECT_THAT(program->errors(), Not(HasSubstr(session->token)));
    const auto again = fix.start(sandbox.url(), {"link"});
    EXPECT_EQ(again->exitCode(), 0);
    EXPECT_EQ(again->errors(), "This Mac is already linked to Sam Rivera. Sign out first to link it anew.\n");
}

} // namespace
} // namespace vorn
