#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <tuple>

#include <sys/stat.h>

namespace vorn::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// The program, with its output in a pipe: reading waits for a line or the program's end, whichever comes.
class Sandbox {
public:
    explicit Sandbox(std::vector<std::string> arguments, const Program::Environment& environment = {})
        : program_("/bin/sh", throughPipe(std::move(arguments)), environment), output_(pipe())
    {
    }
    std::string line()
    {
        std::string line;
        std::getline(output_, line);
        return line;
    }
    Program& program() { return program_; }

private:
    std::string pipe() const { return (folder_ / "pipe").string(); }
    std::vector<std::string> throughPipe(std::vector<std::string> arguments) const
    {
        if (mkfifo(pipe().c_str(), 0600) != 0) throw std::runtime_error("cannot make a pipe");
        arguments.insert(arguments.begin(), {"-c", R"(exec "$@" > "$0")", pipe(), SANDBOX_PROGRAM});
        return arguments;
    }

    TemporaryFolder folder_;
    Program program_;
    std::ifstream output_;
};

int portOf(const std::string& url)
{
    return std::stoi(url.substr(url.rfind(':') + 1));
}

TEST(SandboxProgram, NamesWhatIsNoNumber)
{
    for (const auto& [option, value, text] :
         {std::tuple("--port", "abc", "--port: \"abc\" is not a whole number from 0 to 65535\n"),
          std::tuple("--max-bytes", "1e9", "--max-bytes: \"1e9\" is not a whole number from 0 to 1125899906842624\n"),
          std::tuple("--reward", "nan", "--reward: \"nan\" is not a number from 0 to 1000000\n")}) {
        Program program(SANDBOX_PROGRAM, {option, value});
        EXPECT_EQ(program.exitCode(), 2);
        EXPECT_THAT(program.errors(), StartsWith(text));
    }
}

TEST(SandboxProgram, PrintsItsAddressAndEndsCleanlyWhenAsked)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        const TemporaryFolder temporary;
        Sandbox sandbox({"--port", "0"}, {{"TMPDIR", temporary.path().string()}});
        Program& program = sandbox.program();
        const std::string url = sandbox.line();
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
    Sandbox living({"--port", "0"}, environment);
    living.line();
    const auto ofTheLiving = temporary.names();
    Sandbox killed({"--port", "0"}, environment);
    killed.line();
    killed.program().signal(SIGKILL);
    EXPECT_EQ(killed.program().exitCode(), -1);
    EXPECT_EQ(temporary.names().size(), 2U);
    Sandbox next({"--port", "0"}, environment);
    next.line();
    next.program().signal(SIGTERM);
    EXPECT_EQ(next.program().exitCode(), 0);
    EXPECT_EQ(temporary.names(), ofTheLiving);
}

TEST(SandboxProgram, SaysThatAPortIsTaken)
{
    Sandbox first({"--port", "0"});
    const int port = portOf(first.line());
    Program second(SANDBOX_PROGRAM, {"--port", std::to_string(port)});
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_THAT(second.errors(), HasSubstr("cannot listen on 127.0.0.1:" + std::to_string(port)));
    first.program().signal(SIGTERM); // if it were killed, it would leave its folder behind
    EXPECT_EQ(first.program().exitCode(), 0);
}

TEST(SandboxProgram, SaysWhyItCannotKeepItsState)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    std::filesystem::create_directory(folder / "other");
    writeFile(folder / "other" / "state.sqlite", std::string(1000, 'x'));
    const struct {
        const char* name;
        std::string place;
        const char* reason;
    } cases[]{{"below a file", (folder / "file" / "state").string(), ": Not a directory\n"},
              {"over another database", (folder / "other").string(), "file is not a database"}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        Program program(SANDBOX_PROGRAM, {"--port", "0", "--state", test.place});
        EXPECT_EQ(program.exitCode(), 1);
        EXPECT_THAT(program.errors(), StartsWith("vorn-sandbox: cannot keep the state in " + test.place));
        EXPECT_THAT(program.errors(), HasSubstr(test.reason));
    }
}

TEST(SandboxProgram, ListsItsOptions)
{
    Program program(SANDBOX_PROGRAM, {"--help"});
    EXPECT_EQ(program.exitCode(), 0);
    for (const char* option : {"--port",
                               "--user",
                               "--handle",
                               "--reward",
                               "--auto-approve",
                               "--link-lifetime",
                               "--token-lifetime",
                               "--poll-interval",
                               "--max-bytes",
                               "--part-size",
                               "--initial-parts",
                               "--expire-urls",
                               "--expired-first-urls",
                               "--review",
                               "--delay",
                               "--cooldown",
                               "--fault",
                               "--state",
                               "no-asset",
                               "bad-url",
                               "truncate"}) {
        EXPECT_THAT(program.output(), HasSubstr(option));
    }
}

} // namespace
} // namespace vorn::testing
