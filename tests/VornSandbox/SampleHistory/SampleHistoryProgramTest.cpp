#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"
#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace vorn::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The program, started with `arguments`.
class Sampler : public Program {
public:
    explicit Sampler(std::vector<std::string> arguments) : Program(SAMPLE_HISTORY_PROGRAM, std::move(arguments)) {}
};

TEST(SampleHistoryProgram, WritesAHistoryAndSaysWhatIsInIt)
{
    const TemporaryFolder folder;
    Sampler program(
        {"--output", folder / "chat.db", "--messages", "300", "--in-log", "20", "--handle", "+15550102030"});
    EXPECT_EQ(program.exitCode(), 0) << program.errors();
    EXPECT_THAT(folder.names(), ElementsAre("chat.db", "chat.db-wal"));
    EXPECT_THAT(program.output(), HasSubstr("300 messages"));
    EXPECT_THAT(program.output(), HasSubstr("--handle +15550102030\n"));
}

TEST(SampleHistoryProgram, JSONHoldsTheWholeSummary)
{
    const TemporaryFolder folder;
    Sampler program({"--output", folder / "a.db", "--messages", "400", "--seed", "5", "--only-assistant", "--json",
                     "--until", "2025-06-01T00:00:00Z"});
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
        Sampler program(arguments);
        EXPECT_EQ(program.exitCode(), 2);
        EXPECT_NE(program.errors(), "");
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SampleHistoryProgram, NamesWhatIsMisspeltBeforeWhatIsMissing)
{
    Sampler misspelt({"--frobnicate"});
    EXPECT_EQ(misspelt.exitCode(), 2);
    EXPECT_THAT(misspelt.errors(), HasSubstr("not expected: --frobnicate"));
    Sampler missing({"--messages", "1"});
    EXPECT_EQ(missing.exitCode(), 2);
    EXPECT_THAT(missing.errors(), HasSubstr("--output is required"));
    Sampler streamed({"--output", "-"});
    EXPECT_EQ(streamed.exitCode(), 2);
    EXPECT_THAT(streamed.errors(), HasSubstr("--output: must be a file, not standard output"));
    EXPECT_FALSE(std::filesystem::exists("-"));
}

TEST(SampleHistoryProgram, SaysHowManyRowsItCanWrite)
{
    const TemporaryFolder folder;
    const auto errorsOf = [&folder](const std::string& option, const std::string& value) {
        Sampler program({"--output", folder / "chat.db", option, value});
        EXPECT_EQ(program.exitCode(), 2);
        return program.errors();
    };
    for (const std::string option : {"--messages", "--in-log"}) {
        for (const std::string value : {"abc", "-1", "1.5", "100000001", "99999999999999999999"}) {
            SCOPED_TRACE(option + " " + value);
            EXPECT_THAT(errorsOf(option, value),
                        HasSubstr(option + ": \"" + value + "\" is not a whole number from 0 to 100000000"));
        }
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SampleHistoryProgram, NeedsTheNameOfAFile)
{
    const TemporaryFolder folder;
    for (const std::string& output : {std::string(), folder.path().string() + "/"}) {
        SCOPED_TRACE(output);
        Sampler program({"--output", output, "--messages", "10", "--force"});
        EXPECT_EQ(program.exitCode(), 2);
        EXPECT_THAT(program.errors(), HasSubstr("the output needs the name of a file"));
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SampleHistoryProgram, MakesAndReplacesNoFolder)
{
    const TemporaryFolder folder;
    Sampler missing({"--output", folder / "missing/chat.db", "--messages", "10"});
    EXPECT_EQ(missing.exitCode(), 1);
    EXPECT_THAT(missing.errors(), HasSubstr("there is no folder"));
    EXPECT_THAT(folder.names(), IsEmpty());
    std::filesystem::create_directory(folder / "chat.db");
    Sampler occupied({"--output", folder / "chat.db", "--messages", "10", "--force"});
    EXPECT_EQ(occupied.exitCode(), 1);
    EXPECT_THAT(occupied.errors(), HasSubstr("will not replace"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "chat.db"));
    EXPECT_THAT(folder.names(), ElementsAre("chat.db"));
}

TEST(SampleHistoryProgram, KeepsAFileThatIsThereUnlessForced)
{
    const TemporaryFolder folder;
    writeFile(folder / "chat.db", "mine");
    Sampler refused({"--output", folder / "chat.db", "--messages", "10"});
    EXPECT_EQ(refused.exitCode(), 1);
    EXPECT_EQ(refused.errors(),
              "vorn-sample-history: " + (folder / "chat.db").string() + " already exists. --force replaces it.\n");
    EXPECT_EQ(readFile(folder / "chat.db"), "mine");
    Sampler forced({"--output", folder / "chat.db", "--messages", "10", "--force"});
    EXPECT_EQ(forced.exitCode(), 0);
    EXPECT_TRUE(readFile(folder / "chat.db").starts_with("SQLite format 3"));
}

TEST(SampleHistoryProgram, SaysWhatItCanDo)
{
    Sampler help({"--help"});
    EXPECT_EQ(help.exitCode(), 0);
    EXPECT_THAT(help.output(), HasSubstr("--only-assistant"));
    Sampler version({"--version"});
    EXPECT_EQ(version.exitCode(), 0);
    EXPECT_THAT(version.output(), HasSubstr("vorn-sample-history "));
}

TEST(SampleHistoryProgram, LeavesNothingWhenASignalStopsIt)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        for (const std::string messages : {"2000000", "100000000"}) { // interrupted while writing; while measuring
            SCOPED_TRACE(messages + " messages, signal " + std::to_string(signal));
            const TemporaryFolder folder;
            Sampler program({"--output", folder / "chat.db", "--messages", messages});
            while (folder.names().empty()) std::this_thread::yield(); // until it has begun
            program.signal(signal);
            EXPECT_EQ(program.exitCode(), 128 + signal);
            EXPECT_THAT(folder.names(), IsEmpty());
        }
    }
}

TEST(SampleHistoryProgram, LeavesNothingWhenFilesMayNotGrow)
{
    const TemporaryFolder folder;
    Program program("/bin/sh", {"-c", "ulimit -f 500 && exec \"$0\" \"$@\"", SAMPLE_HISTORY_PROGRAM, "--output",
                                folder / "chat.db", "--messages", "5000"});
    EXPECT_EQ(program.exitCode(), 1) << "a signal must not end it";
    EXPECT_THAT(program.errors(), HasSubstr("vorn-sample-history: "));
    EXPECT_THAT(folder.names(), IsEmpty());
}

} // namespace
} // namespace vorn::testing
