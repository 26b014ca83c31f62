// The whole journey with a user at the keyboard.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using testing::LinkedFixture;
using ::testing::Not;
using testing::Sandbox;
using testing::TerminalFixture;

TEST(JourneyWindow, TakesNoAnswerThatWasTypedBeforeItsQuestion)
{
    const TerminalFixture fix;
    Sandbox sandbox;
    const auto window = fix.shareInWindow(sandbox.url(), {});
    const std::string link = sandbox.scan(fix.codeOn(*window));
    window->type("y\ry\ry\r\r");
    window->waitFor("y\r\ny\r\ny\r\n\r\n"); // echoed by the terminal
    sandbox.approve(link);
    window->waitFor("I understand what's uploaded [y/N]\r\n");
    window->answer("y");
    window->waitFor("I agree to share my Nimbrel chat [y/N]\r\n");
    window->answer("y");
    window->waitFor("Upload chat? [y/N]\r\n");
    window->answer("n");
    EXPECT_EQ(window->exitCode(), 11);
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("submissions")));
}

TEST(JourneyWindow, WatchesTheReviewOfASecondUploadAfterALostSession)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--fault", "submission=401x1", "--fault", "refresh=401x1", "--cooldown", "0"});
    fix.link(sandbox);
    const auto window = fix.shareInWindow(sandbox.url(), {});
    for (const char* question : {"I understand what's uploaded", "I agree to share my Nimbrel chat", "Upload chat?"}) {
        window->waitFor(question + std::string(" [y/N]\r\n"));
        window->answer("y");
    }
    window->waitFor("Upload received. Checking your chat.\r\n");
    window->waitFor("Your Mac is no longer linked. Link it again.\r\n");
    sandbox.approve(sandbox.scan(fix.codeOn(*window)));
    window->waitFor("Upload chat? [y/N]\r\n");
    window->answer("y");
    window->waitFor("Upload received. Checking your chat.\r\n");
    EXPECT_EQ(window->exitCode(), 0);
    window->waitFor("You earned $12.50.");
}

TEST(JourneyWindow, SaysNothingOfTheOldCodeOnceTheSessionIsLost)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--fault", "quest=401x1", "--fault", "refresh=401x1"});
    const auto window = fix.shareInWindow(sandbox.url(), {});
    const std::string redeemed = fix.codeOn(*window);
    sandbox.approve(sandbox.scan(redeemed));
    window->waitFor("Your Mac is no longer linked. Link it again.\r\n");
    const std::size_t lost = window->shown().size();
    const std::string next = fix.codeOn(*window, redeemed);
    EXPECT_THAT(window->shown().substr(lost), Not(HasSubstr("Scanned")));
    sandbox.approve(sandbox.scan(next));
    window->waitFor("I understand what's uploaded [y/N]\r\n");
    window->answer("n");
    EXPECT_EQ(window->exitCode(), 11);
}

} // namespace
} // namespace vorn
