// How ./run responds to its arguments. Runs a copy of it in an empty folder, so that it ends early.
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using testing::Program;

class RunScriptFixture {
public:
    RunScriptFixture() { std::filesystem::copy_file(RUN_SCRIPT, folder_ / "run"); }

    std::unique_ptr<Program> run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), folder_ / "run");
        return std::make_unique<Program>("/bin/bash", std::move(arguments));
    }

private:
    testing::TemporaryFolder folder_;
};

TEST(RunScript, ChecksTheNumberOfMessagesBeforeItDoesAnything)
{
    const RunScriptFixture fix;
    for (const std::string number : {"", "x", "-1", "0", "1.5", "2000 ", "12345678", "1;id"}) {
        const auto program = fix.run({"--messages", number});
        EXPECT_EQ(program->exitCode(), 2) << number;
        EXPECT_EQ(program->errors(), "run: --messages needs a number from 1 to 9999999, not \"" + number + "\"\n");
        EXPECT_EQ(program->output(), "");
    }
    const auto missing = fix.run({"--messages"});
    EXPECT_EQ(missing->exitCode(), 2);
    EXPECT_EQ(missing->errors(), "run: --messages needs a number from 1 to 9999999, not \"\"\n");
}

TEST(RunScript, BeginsWithAFittingNumber)
{
    const RunScriptFixture fix;
    for (const char* number : {"1", "2000", "9999999"}) {
        const auto program = fix.run({"--messages", number});
        EXPECT_NE(program->exitCode(), 0); // there is nothing to install with
        EXPECT_EQ(program->output(), "==> Installing what is missing\n");
    }
}

TEST(RunScript, NeedsAFolderForTheTour)
{
    const RunScriptFixture fix;
    const auto program = fix.run({"--tour"});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(), "run: --tour needs a folder\n");
    EXPECT_EQ(program->output(), "");
}

TEST(RunScript, RefusesOptionsThatItDoesNotKnow)
{
    const RunScriptFixture fix;
    const auto program = fix.run({"--fast"});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_THAT(program->errors(), HasSubstr("run: unknown option --fast\n"));
}

} // namespace
} // namespace vorn
