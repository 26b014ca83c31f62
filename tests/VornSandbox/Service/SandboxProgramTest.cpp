#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>

#include <csignal>
#include <thread>

namespace vorn::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::string firstLine(const Program& program)
{
    while (program.output().find('\n') == std::string::npos) std::this_thread::yield();
    return program.output().substr(0, program.output().find('\n'));
}

int portOf(const std::string& url)
{
    return std::stoi(url.substr(url.rfind(':') + 1));
}

TEST(SandboxProgram, PrintsItsAddressAndEndsCleanlyWhenAsked)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        const TemporaryFolder temporary;
        Program program(SANDBOX_PROGRAM, {"--port", "0"}, {{"TMPDIR", temporary.path().string()}});
        const std::string url = firstLine(program);
        ASSERT_THAT(url, StartsWith("http://127.0.0.1:"));
        httplib::Client client("127.0.0.1", portOf(url));
        client.set_keep_alive(true); // an idle connection must not hold it up
        const auto answer = client.Get("/api/v1/desktop/nimbrel", {{"Accept", "application/json"}});
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 401);
        program.signal(signal);
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_THAT(program.errors(), HasSubstr("GET /api/v1/desktop/nimbrel 401 "));
        EXPECT_THAT(temporary.names(), IsEmpty());
    }
}

TEST(SandboxProgram, RemovesWhatAKilledRunLeftButNothingOfALivingOne)
{
    const TemporaryFolder temporary;
    const Program::Environment environment{{"TMPDIR", temporary.path().string()}};
    Program living(SANDBOX_PROGRAM, {"--port", "0"}, environment);
    firstLine(living);
    const auto ofTheLiving = temporary.names();
    Program killed(SANDBOX_PROGRAM, {"--port", "0"}, environment);
    firstLine(killed);
    killed.signal(SIGKILL);
    EXPECT_EQ(killed.exitCode(), -1);
    EXPECT_EQ(temporary.names().size(), 2U);
    Program next(SANDBOX_PROGRAM, {"--port", "0"}, environment);
    firstLine(next);
    next.signal(SIGTERM);
    EXPECT_EQ(next.exitCode(), 0);
    EXPECT_EQ(temporary.names(), ofTheLiving);
}

TEST(SandboxProgram, SaysThatAPortIsTaken)
{
    Program first(SANDBOX_PROGRAM, {"--port", "0"});
    const int port = portOf(firstLine(first));
    Program second(SANDBOX_PROGRAM, {"--port", std::to_string(port)});
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_THAT(second.errors(), HasSubstr("cannot listen on 127.0.0.1:" + std::to_string(port)));
}

TEST(SandboxProgram, ListsItsOptions)
{
    Program program(SANDBOX_PROGRAM, {"--help"});
    EXPECT_EQ(program.exitCode(), 0);
    for (const char* option :
         {"--port", "--user", "--handle", "--reward", "--auto-approve", "--link-lifetime", "--token-lifetime",
          "--poll-interval", "--max-bytes", "--part-size", "--initial-parts", "--expire-urls", "--expired-first-urls",
          "--review", "--delay", "--cooldown", "--fault", "--state"}) {
        EXPECT_THAT(program.output(), HasSubstr(option));
    }
}

} // namespace
} // namespace vorn::testing
