#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system's headers have it

namespace vorn::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The program, started with `arguments`; what it prints goes to files.
class Program {
public:
    explicit Program(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), SAMPLE_HISTORY_PROGRAM);
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&actions, 1, (prints_ / "out").c_str(), flags, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, (prints_ / "err").c_str(), flags, 0600);
        EXPECT_EQ(posix_spawn(&process_, SAMPLE_HISTORY_PROGRAM, &actions, nullptr, pointers.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
    }

    void signal(int number) const { kill(process_, number); }

    /// Waits for its end and gives its exit code; -1 when a signal ended it.
    int exitCode() const
    {
        int status = 0;
        waitpid(process_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string output() const { return readFile(prints_ / "out"); }
    std::string errors() const { return readFile(prints_ / "err"); }

private:
    TemporaryFolder prints_;
    pid_t process_ = -1;
};

TEST(SampleHistoryProgram, WritesAHistoryAndSaysWhatIsInIt)
{
    const TemporaryFolder folder;
    const Program program(
        {"--output", folder / "chat.db", "--messages", "300", "--in-log", "20", "--handle", "+15550102030"});
    EXPECT_EQ(program.exitCode(), 0) << program.errors();
    EXPECT_THAT(folder.names(), ElementsAre("chat.db", "chat.db-wal"));
    EXPECT_THAT(program.output(), HasSubstr("300 messages"));
    EXPECT_THAT(program.output(), HasSubstr("--handle +15550102030\n"));
}

TEST(SampleHistoryProgram, JSONHoldsTheWholeSummary)
{
    const TemporaryFolder folder;
    const Program program({"--output", folder / "a.db", "--messages", "400", "--seed", "5", "--only-assistant",
                           "--json", "--until", "2025-06-01T00:00:00Z"});
    ASSERT_EQ(program.exitCode(), 0) << program.errors();
    const auto summary = writeSampleHistory(
        folder / "b.db", {.messages = 400, .seed = 5, .onlyAssistant = true, .until = 1'748'736'000});
    const auto json = nlohmann::json::parse(program.output());
    EXPECT_EQ(json["handles"], summary.handles);
    EXPECT_EQ(json["messages"], 400);
    EXPECT_EQ(json["conversations"].size(), 1U);
    EXPECT_EQ(json["conversations"][0]["guid"], summary.conversations[0].guid);
    EXPECT_EQ(json["expected"]["kept"], summary.expected.kept);
    EXPECT_EQ(json["expected"]["skipped"], nlohmann::json(summary.expected.skipped));
    EXPECT_EQ(json["expected"]["attachmentTypes"], nlohmann::json(summary.expected.attachmentTypes));
    EXPECT_EQ(json["expected"]["lastAt"], summary.expected.lastAt.value_or(0));
    EXPECT_LT(json["expected"]["lastAt"], 1'748'736'000);
}

TEST(SampleHistoryProgram, RefusesWrongCommandLines)
{
    const TemporaryFolder folder;
    const std::string output = folder / "chat.db";
    const std::vector<std::vector<std::string>> wrong{
        {},
        {"--output", output, "--messages", "-4"},
        {"--output", output, "--messages", "many"},
        {"--output", output, "--unknown"},
        {"--output", output, "--until", "yesterday"},
        {"--output", output, "--messages", "5", "--in-log", "6"},
        {"--output", output, "--handle", "+1555", "--handle", "+1555"},
    };
    for (const auto& arguments : wrong) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const Program program(arguments);
        EXPECT_EQ(program.exitCode(), 2);
        EXPECT_NE(program.errors(), "");
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SampleHistoryProgram, KeepsAFileThatIsThereUnlessForced)
{
    const TemporaryFolder folder;
    writeFile(folder / "chat.db", "mine");
    const Program refused({"--output", folder / "chat.db", "--messages", "10"});
    EXPECT_EQ(refused.exitCode(), 1);
    EXPECT_THAT(refused.errors(), HasSubstr("will not replace"));
    EXPECT_EQ(readFile(folder / "chat.db"), "mine");
    const Program forced({"--output", folder / "chat.db", "--messages", "10", "--force"});
    EXPECT_EQ(forced.exitCode(), 0);
    EXPECT_TRUE(readFile(folder / "chat.db").starts_with("SQLite format 3"));
}

TEST(SampleHistoryProgram, SaysWhatItCanDo)
{
    const Program help({"--help"});
    EXPECT_EQ(help.exitCode(), 0);
    EXPECT_THAT(help.output(), HasSubstr("--only-assistant"));
    const Program version({"--version"});
    EXPECT_EQ(version.exitCode(), 0);
    EXPECT_THAT(version.output(), HasSubstr("vorn-sample-history "));
}

TEST(SampleHistoryProgram, LeavesNothingWhenASignalStopsIt)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal);
        const TemporaryFolder folder;
        const Program program({"--output", folder / "chat.db", "--messages", "2000000"});
        while (folder.names().empty()) std::this_thread::yield(); // until it has begun
        program.signal(signal);
        EXPECT_EQ(program.exitCode(), 128 + signal);
        EXPECT_THAT(folder.names(), IsEmpty());
    }
}

} // namespace
} // namespace vorn::testing
