// The program as a user runs it.
#include "Platform/Base/SHA256.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/Program.h"

#include <csignal>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sched.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::MessagesFixture;
using ::testing::Not;
using testing::Program;
using testing::readFile;

class ExportProgram : public ::testing::Test {
protected:
    testing::TemporaryFolder home, temporary, target;
    const fs::path database = home / "chat.db";
    const fs::path output = target / "out.zip";

    std::vector<std::string> usualArguments() const
    {
        return {"--database", database, "--handle", MessagesFixture::assistant, "--output", output};
    }
    Program start(std::vector<std::string> arguments) const
    {
        return {EXPORT_PROGRAM, std::move(arguments), {{"TMPDIR", temporary.path().string()}}};
    }
    Program start() const { return start(usualArguments()); }

    void writeHistory() const
    {
        MessagesFixture fixture(database);
        fixture.assistantChat();
        fixture.message();
        fixture.message({.isFromMe = std::int64_t{1}});
        fixture.message({.itemType = std::int64_t{1}});
    }
    /// Leaves out the lock file, which stays behind, empty, if a signal ends the program at once.
    std::vector<std::string> itemsLeft() const
    {
        auto names = temporary.names();
        // The thread sanitizer has a file there while a program starts.
        std::erase_if(names,
                      [](const std::string& name) { return name.ends_with(".lock") || name.starts_with("tsan."); });
        return names;
    }
    void expectNothingLeft() const
    {
        EXPECT_THAT(itemsLeft(), IsEmpty());
        EXPECT_THAT(target.names(), IsEmpty());
    }
    void expectFailure(int code, const std::string& text) const
    {
        Program program = start();
        EXPECT_EQ(program.exitCode(), code);
        EXPECT_EQ(program.errors(), text);
        EXPECT_EQ(program.output(), "");
        expectNothingLeft();
    }
};

TEST_F(ExportProgram, WritesTheArchiveAndSaysWhatIsInIt)
{
    writeHistory();
    Program program = start();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.errors(), "");
    EXPECT_THAT(program.output(), HasSubstr("Messages        2\n  yours         1\n  replies       1\n"));
    EXPECT_THAT(program.output(), HasSubstr("  system        1\n"));
    EXPECT_THAT(program.output(), HasSubstr("SHA-256       " + SHA256::hexDigestOfFile(output) + "\n"));
    EXPECT_THAT(temporary.names(), IsEmpty());
    EXPECT_THAT(target.names(), ElementsAre("out.zip"));
    EXPECT_EQ(fs::status(output).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ExportProgram, FindsInASampleHistoryWhatWasPutThere)
{
    SampleHistoryOptions options;
    options.messages = 4000;
    options.inLog = 50;
    const SampleHistorySummary history = writeSampleHistory(database, options);
    std::vector<std::string> arguments = {"--database", database, "--output", output, "--json"};
    for (const std::string& handle : history.handles) arguments.insert(arguments.end(), {"--handle", handle});
    const std::string before = readFile(database) + readFile(database.string() + "-wal");
    Program program = start(arguments);
    EXPECT_EQ(program.exitCode(), 0) << program.errors();
    const auto statistics = nlohmann::json::parse(program.output());
    EXPECT_EQ(statistics.at("messages"), history.expected.kept);
    EXPECT_EQ(statistics.at("prompts"), history.expected.prompts);
    EXPECT_EQ(statistics.at("replies"), history.expected.replies);
    EXPECT_EQ(statistics.at("skipped"), nlohmann::json(history.expected.skipped));
    EXPECT_EQ(readFile(database) + readFile(database.string() + "-wal"), before);
    EXPECT_THAT(home.names(), ElementsAre("chat.db", "chat.db-wal"));
}

TEST_F(ExportProgram, GivesTheSameArchiveForTheSameTime)
{
    writeHistory();
    auto arguments = usualArguments();
    arguments.insert(arguments.end(), {"--exported-at", "2026-03-01T09:15:00Z"});
    EXPECT_EQ(start(arguments).exitCode(), 0);
    const std::string first = readFile(output);
    EXPECT_EQ(start(arguments).exitCode(), 0); // replaces the first
    EXPECT_EQ(readFile(output), first);
}

TEST_F(ExportProgram, SaysThatThereIsNoDatabase)
{
    expectFailure(3, "There is no database at " + database.string() + ".\n");
}

#ifdef NO_USERS_MODULE // requires a module that simulates a system without users
TEST_F(ExportProgram, SaysThatTheUserHasNoDatabase)
{
    std::vector<std::string> arguments = usualArguments();
    arguments.erase(arguments.begin(), arguments.begin() + 2);
    const auto as = [&](const std::string& folder) {
        return Program(EXPORT_PROGRAM, arguments,
                       {{"TMPDIR", temporary.path().string()}, {"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", folder}});
    };
    Program withoutMessages = as(home.path().string());
    EXPECT_EQ(withoutMessages.exitCode(), 3);
    EXPECT_EQ(withoutMessages.errors(), "Messages isn't set up on this Mac. There is no database at " +
                                            (home / "Library/Messages/chat.db").string() + ".\n");
    Program withoutHome = as("");
    EXPECT_EQ(withoutHome.exitCode(), 3);
    EXPECT_EQ(withoutHome.errors(),
              "This user has no home folder, so there is no Messages history here. HOME can name one.\n");
    expectNothingLeft();
}
#endif

TEST_F(ExportProgram, SaysThatTheFileIsNoDatabase)
{
    for (const std::string content : {"x", "Dear diary, this is not what you are looking for.\n"}) {
        testing::writeFile(database, content);
        expectFailure(5, database.string() + " is not a database.\n");
    }
    fs::remove(database);
    fs::create_directory(database);
    expectFailure(5, database.string() + " is not a database.\n");
    fs::remove(database);
    ASSERT_EQ(mkfifo(database.c_str(), 0600), 0);
    expectFailure(5, database.string() + " is not a database.\n");
}

TEST_F(ExportProgram, WritesNothingWhereThereIsNothingToExport)
{
    testing::writeFile(output, "an earlier archive");
    const auto expectNothing = [&](const std::string& text) {
        Program program = start();
        EXPECT_EQ(program.exitCode(), 10);
        EXPECT_EQ(program.errors(), text);
        EXPECT_EQ(program.output(), "");
        EXPECT_EQ(readFile(output), "an earlier archive");
        EXPECT_THAT(itemsLeft(), IsEmpty());
    };
    MessagesFixture fixture(database);
    expectNothing(
        "There is no one-to-one conversation with these handles. Nothing was written; --allow-empty writes an "
        "archive anyway.\n");
    fixture.assistantChat();
    fixture.message({.itemType = std::int64_t{1}}); // is left out
    expectNothing("The conversation holds no message that is exported. Nothing was written; --allow-empty writes an "
                  "archive anyway.\n");
    std::vector<std::string> arguments = usualArguments();
    arguments.emplace_back("--allow-empty");
    Program program = start(arguments);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_THAT(program.output(), HasSubstr("Messages        0\n"));
    EXPECT_TRUE(readFile(output).starts_with("PK"));
}

TEST_F(ExportProgram, SaysThatAccessIsDenied)
{
    testing::writeFile(home / "file", ""); // not even the superuser can open a path below a file
    std::vector<std::string> arguments = usualArguments();
    arguments[1] = home / "file/chat.db";
    Program program = start(arguments);
    EXPECT_EQ(program.exitCode(), 4);
    EXPECT_EQ(program.errors(), "Allow Full Disk Access so Vorn can read Messages.\n"
                                "Open System Settings → Privacy & Security → Full Disk Access.\n");
    expectNothingLeft();
}

TEST_F(ExportProgram, SaysThatTheDatabaseStayedUnreadable)
{
    testing::writeFile(database, "SQLite format 3" + std::string(8192, '\0'));
    expectFailure(5, "Messages was busy. Try again in a moment.\n");
}

TEST_F(ExportProgram, SaysThatTheDatabaseCannotBeRead)
{
    SQLiteDatabase(database.string(), SQLiteDatabase::Mode::create).execute("CREATE TABLE other (id INTEGER)");
    expectFailure(6, "Vorn couldn't read your Messages history.\nSQLite prepare failed (1): no such table: chat\n");
}

TEST_F(ExportProgram, SaysThatTheOutputCannotBeWritten)
{
    writeHistory();
    auto arguments = usualArguments();
    arguments.back() = target / "missing/out.zip";
    Program program = start(arguments);
    EXPECT_EQ(program.exitCode(), 7);
    EXPECT_EQ(program.errors(),
              "Vorn couldn't write the archive to " + arguments.back() + ": No such file or directory.\n");
    arguments.back() = target.path();
    Program onFolder = start(arguments);
    EXPECT_EQ(onFolder.exitCode(), 7);
    EXPECT_EQ(onFolder.errors(), "Vorn couldn't write the archive to " + arguments.back() + ": Is a directory.\n");
    expectNothingLeft();
}

TEST_F(ExportProgram, SaysThatNoCopyCanBeMadeWithoutAFolderForIt)
{
    writeHistory();
    testing::writeFile(home / "no-folder", "");
    for (const auto& [name, reason] :
         {std::pair("no-folder", "Not a directory"), std::pair("none", "No such file or directory")}) {
        Program program(EXPORT_PROGRAM, usualArguments(), {{"TMPDIR", home / name}});
        EXPECT_EQ(program.exitCode(), 8);
        EXPECT_EQ(program.errors(), "The folder for temporary files, " + (home / name).string() +
                                        ", cannot be used: " + reason + ". TMPDIR names it.\n");
    }
    EXPECT_THAT(home.names(), Not(Contains("none")));
    expectNothingLeft();
}

TEST_F(ExportProgram, SaysWhatIsWrongWithItsArguments)
{
    Program program = start({"--handle", "x"});
    EXPECT_EQ(program.exitCode(), 2);
    EXPECT_EQ(program.errors(), "--output is required\nRun with --help for more information.\n");
}

TEST_F(ExportProgram, SaysThatAPathCannotBeUsed)
{
    writeHistory();
    auto arguments = usualArguments();
    arguments.back() = target / std::string(300, 'a');
    Program tooLong = start(arguments);
    EXPECT_EQ(tooLong.exitCode(), 7);
    EXPECT_THAT(tooLong.errors(), HasSubstr("File name too long.\n"));
    fs::create_symlink("loop", target / "loop");
    arguments.back() = target / "loop";
    Program looping = start(arguments);
    EXPECT_EQ(looping.exitCode(), 7);
    EXPECT_THAT(looping.errors(), HasSubstr("Too many levels of symbolic links.\n"));
}

TEST_F(ExportProgram, LeavesNothingAtALimitOfFileSizes)
{
    SampleHistoryOptions options;
    options.messages = 2000;
    writeSampleHistory(database, options);
    std::vector<std::string> arguments = {"-c", "ulimit -f 200; exec \"$@\"", "sh", EXPORT_PROGRAM};
    for (const std::string& argument : usualArguments()) arguments.push_back(argument);
    Program program("/bin/sh", arguments, {{"TMPDIR", temporary.path().string()}});
    EXPECT_EQ(program.exitCode(), 8);
    EXPECT_EQ(program.errors(), "Vorn couldn't make its private copy of your Messages history: File too large.\n");
    expectNothingLeft();
}

TEST_F(ExportProgram, NoticesThatItsStatisticsAreLost)
{
    writeHistory();
    std::vector<std::string> arguments = {"-c", "exec \"$@\" 1</dev/null", "sh", EXPORT_PROGRAM};
    for (const std::string& argument : usualArguments()) arguments.push_back(argument);
    Program program("/bin/sh", arguments, {{"TMPDIR", temporary.path().string()}});
    EXPECT_EQ(program.exitCode(), 9);
    EXPECT_EQ(program.errors(), "The archive is written, but its statistics could not be printed.\n");
    EXPECT_THAT(target.names(), ElementsAre("out.zip"));
}

TEST_F(ExportProgram, RemovesWhatAKilledOneLeft)
{
    writeHistory();
    fs::create_directory(temporary / "vorn-messages-0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B");
    testing::writeFile(temporary / "vorn-messages-0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B/chat.db", "messages");
    testing::writeFile(temporary / "vorn-messages-notes.txt", "kept");
    testing::writeFile(target / ".incomplete-0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B", "half an archive");
    EXPECT_EQ(start().exitCode(), 0);
    EXPECT_THAT(temporary.names(), ElementsAre("vorn-messages-notes.txt"));
    EXPECT_THAT(target.names(), ElementsAre("out.zip"));
}

class InterruptedExport : public ExportProgram {
protected:
    std::vector<std::string> arguments = usualArguments();

    InterruptedExport()
    {
        SampleHistoryOptions options;
        options.messages = 60'000;
        options.onlyAssistant = true;
        arguments[3] = writeSampleHistory(database, options).handles.front();
    }
};

TEST_F(InterruptedExport, EndsByTheSignalAndLeavesNothing)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        Program program = start(arguments);
        while (itemsLeft().empty()) sched_yield(); // the copy has begun
        program.signal(number);
        EXPECT_EQ(program.exitCode(), 128 + number);
        EXPECT_EQ(program.errors(), "Stopped. Nothing was written.\n");
        expectNothingLeft();
    }
}

TEST_F(InterruptedExport, LeavesNothingWheneverTheSignalComes)
{
    for (int polls = 0; polls < 16; ++polls) {
        Program program = start(arguments);
        for (int poll = 0; poll < polls * polls * 150; ++poll) temporary.names();
        program.signal(SIGTERM);
        // -1: the signal came before the program handled it; 0: the program had finished
        EXPECT_THAT(program.exitCode(), ::testing::AnyOf(128 + SIGTERM, -1, 0));
        EXPECT_THAT(itemsLeft(), IsEmpty()) << "after " << polls;
        EXPECT_THAT(target.names(), ::testing::Each("out.zip"));
        fs::remove(output);
    }
}

} // namespace
} // namespace vorn
