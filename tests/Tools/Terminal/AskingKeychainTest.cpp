// A keychain that asks its user, and one that refuses.
#include "tests/Platform/Keychain/FakeSecretService.h"
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <csignal>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::FakeSecretService;
using ::testing::StartsWith;
using testing::TerminalFixture;
using testing::TestBus;

constexpr const char* nowhere = "http://127.0.0.1:9";

TEST(AskingKeychain, IsWaitedForInWordsAndLeftByASignal)
{
    for (const char* command : {"status", "share"}) {
        const TerminalFixture fix;
        const TestBus bus;
        const FakeSecretService service(bus.address(), FakeSecretService::Fault::hangingDialog);
        const auto program = std::string(command) == "share" ? fix.share(nowhere, {}) : fix.start(nowhere, {command});
        fix.waitForLine(*program, "Waiting for your keychain…");
        program->signal(SIGINT);
        EXPECT_EQ(program->exitCode(), 128 + SIGINT);
        EXPECT_EQ(program->errors(), "Waiting for your keychain…\nStopped.\n");
    }
}

TEST(AskingKeychain, IsAskedOnceAndItsRefusalTold)
{
    struct Case {
        const char* command;
        const char* consequence;
    };
    for (const Case& each :
         {Case{"status", "Vorn can't tell whether this Mac is linked."},
          Case{"link", "The link could not be kept, so this Mac was not linked."},
          Case{"sign-out", "This Mac may still be linked. Sign out again once the keychain can be reached."}}) {
        const TerminalFixture fix;
        const TestBus bus;
        const FakeSecretService service(bus.address(), FakeSecretService::Fault::dismissed);
        const auto program = fix.start(nowhere, {each.command});
        EXPECT_EQ(program->exitCode(), 10);
        EXPECT_EQ(fix.errorsBesideTheWait(*program),
                  std::string("The keychain was not unlocked. ") + each.consequence + "\n");
        EXPECT_EQ(service.dialogs(), 1);
    }
}

TEST(AskingKeychain, IsForgoneForAShareThatLinksForItsRunAlone)
{
    const TerminalFixture fix;
    const TestBus bus;
    const FakeSecretService service(bus.address(), FakeSecretService::Fault::dismissed);
    const auto program = fix.share(nowhere, {"--yes"});
    EXPECT_EQ(program->exitCode(), 7);
    EXPECT_THAT(program->errors(), StartsWith("The keychain was not unlocked. The link lasts for this run only.\n"
                                              "Getting a code…\n"));
    EXPECT_EQ(service.dialogs(), 1);
}

} // namespace
} // namespace vorn
