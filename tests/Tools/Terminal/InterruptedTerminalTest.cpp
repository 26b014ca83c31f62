// Signals, while the service answers and while it does not.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <chrono>
#include <csignal>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using testing::LinkedFixture;
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
    EXPECT_EQ(program.output(), "");
}

TEST(InterruptedTerminal, TakesAnUploadBack)
{
    const LinkedFixture fix;
    const std::string archive = fix.archive(9'000'000);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        Sandbox sandbox({"--fault", "put-part=hang@2"}); // in the middle of the second part
        fix.link(sandbox);
        const auto program = fix.start(sandbox.url(), {"upload", archive});
        sandbox.waitForLog("/1 200 ");
        expectStopped(*program, number);
        sandbox.waitForLog("/abort 200 "); // written after the answer, which the program does not stay for
    }
}

TEST(InterruptedTerminal, DoesNotWaitForAServiceThatHangs)
{
    struct Case {
        std::vector<std::string> options;
        const char* lastAnswer; ///< in the service's log; after it, the service is silent, to the abort too
    };
    const LinkedFixture fix;
    const std::string archive = fix.archive(1000);
    for (const Case& each : {Case{{"--fault", "create-submission=hang"}, "GET /api/v1/desktop/nimbrel 200 "},
                             Case{{"--fault", "put-part=hang", "--fault", "abort=hang"}, "/submissions 201 "},
                             Case{{"--fault", "complete=hang", "--fault", "abort=hang"}, "/1 200 "}}) {
        SCOPED_TRACE(each.lastAnswer);
        Sandbox sandbox(each.options);
        fix.link(sandbox);
        const auto program = fix.start(sandbox.url(), {"upload", archive});
        sandbox.waitForLog(each.lastAnswer);
        expectStopped(*program, SIGINT);
    }
}

} // namespace
} // namespace vorn
