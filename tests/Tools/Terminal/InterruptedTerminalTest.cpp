// Signals, while the service answers and while it does not.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <algorithm>
#include <chrono>
#include <csignal>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using testing::LinkedFixture;
using ::testing::Not;
using testing::Program;
using testing::Sandbox;

/// Far less than a request may take, far more than a busy machine needs.
constexpr auto soon = 10s;

void expectStopped(Program& program, int number)
{
    const auto begin = std::chrono::steady_clock::now();
    program.signal(number);
    EXPECT_EQ(program.exitCode(), 128 + number);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, soon);
    EXPECT_THAT(program.errors(), EndsWith("Stopped.\n"));
}

TEST(InterruptedTerminal, TakesAnUploadBackAndLeavesNothingBehind)
{
    const LinkedFixture fix;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        Sandbox sandbox({"--fault", "put-part=hang"});
        fix.link(sandbox);
        const auto program = fix.share(sandbox.url(), {"--yes"});
        fix.waitForLine(*program, "Finishing up…"); // the part has been sent, so the program knows the submission
        expectStopped(*program, number);
        sandbox.waitForLog("/abort 200 "); // written after the answer, for which the program does not wait
        EXPECT_THAT(fix.leftovers(), IsEmpty());
    }
}

TEST(InterruptedTerminal, DoesNotWaitForAServiceThatHangs)
{
    struct Case {
        std::vector<std::string> options;
        const char* lastAnswer; ///< in the service's log; after it, the service answers nothing, not even the abort
    };
    const LinkedFixture fix;
    for (const Case& each : {Case{{"--fault", "create-submission=hang"}, "GET /api/v1/desktop/nimbrel 200 "},
                             Case{{"--fault", "put-part=hang", "--fault", "abort=hang"}, "/submissions 201 "},
                             Case{{"--fault", "complete=hang", "--fault", "abort=hang"}, "/1 200 "}}) {
        SCOPED_TRACE(each.lastAnswer);
        Sandbox sandbox(each.options);
        fix.link(sandbox);
        const auto program = fix.share(sandbox.url(), {"--yes"});
        sandbox.waitForLog(each.lastAnswer);
        expectStopped(*program, SIGINT);
        EXPECT_THAT(fix.leftovers(), IsEmpty());
    }
}

TEST(InterruptedTerminal, LeavesNothingThatTheNextStartDoesNotSweep)
{
    const LinkedFixture fix;
    for (const char* moment : {"create-submission=hang", "put-part=hang", "complete=hang"}) {
        SCOPED_TRACE(moment);
        Sandbox sandbox({"--fault", moment + std::string("x1")});
        fix.link(sandbox);
        const auto killed = fix.share(sandbox.url(), {"--yes"});
        const auto hasArchive = [&] {
            const auto names = fix.leftovers();
            return std::ranges::any_of(names, [](const auto& name) { return name.starts_with("vorn-nimbrel-"); });
        };
        testing::waitUntil(hasArchive, "an archive");
        killed->signal(SIGKILL);
        EXPECT_EQ(killed->exitCode(), -1);
        EXPECT_THAT(fix.leftovers(), Not(IsEmpty()));
        fix.start(sandbox.url(), {"sign-out"})->exitCode(); // any start removes it
        EXPECT_THAT(fix.leftovers(), IsEmpty());
    }
}

TEST(InterruptedTerminal, LeavesNothingWhereverItIsKilled)
{
    const LinkedFixture fix;
    for (const char* words : {"I agree", "Reading", "Found", "Packing", "Uploading", "Upload received"}) {
        SCOPED_TRACE(words);
        Sandbox sandbox; // a new one: the upload may have arrived before the kill, and a second one is refused then
        fix.link(sandbox);
        const auto killed = fix.share(sandbox.url(), {"--yes"});
        testing::waitUntil([&] { return killed->errors().find(words) != std::string::npos; }, words);
        killed->signal(SIGKILL);
        EXPECT_EQ(killed->exitCode(), -1);
        fix.start(sandbox.url(), {"sign-out"})->exitCode();
        EXPECT_THAT(fix.leftovers(), IsEmpty());
        std::filesystem::remove_all(fix.folder / "config"); // so that it asks again
    }
}

TEST(InterruptedTerminal, StopsWhileItAsksInAWindowThatIsClosed)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto window = fix.shareInWindow(sandbox.url(), {});
    window->waitFor("[y/N]");
    window->signal(SIGHUP);
    EXPECT_EQ(window->exitCode(), 128 + SIGHUP);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

} // namespace
} // namespace vorn
