// What show prints, saves, and does not touch.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using testing::LinkedFixture;
using ::testing::Not;
using testing::Program;
using testing::readFile;
using testing::Sandbox;
using testing::TerminalFixture;

constexpr const char* looking = "Reading a private copy of your Messages history…\n";

class ShowProgram : public ::testing::Test {
protected:
    /// `show` of a linked Mac.
    std::unique_ptr<Program> show(std::vector<std::string> arguments)
    {
        fix_.link(sandbox_);
        arguments.insert(arguments.begin(), "show");
        return fix_.share(sandbox_.url(), std::move(arguments));
    }

    LinkedFixture fix_;
    Sandbox sandbox_;
};

TEST_F(ShowProgram, PrintsEverythingAndSendsNothing)
{
    const auto program = show({});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_EQ(program->errors(), looking);
    EXPECT_THAT(program->output(), HasSubstr("Everything we upload\n  Messages "));
    EXPECT_THAT(program->output(), HasSubstr("\nLeft out\n"));
    EXPECT_THAT(program->output(), HasSubstr("\nNimbrel · "));
    EXPECT_THAT(sandbox_.log(), Not(HasSubstr("submissions")));
    EXPECT_THAT(fix_.leftovers(), ::testing::IsEmpty());
}

TEST_F(ShowProgram, PrintsWhatASearchFinds)
{
    const auto all = show({"--search", " "});
    EXPECT_EQ(all->exitCode(), 0);
    EXPECT_THAT(all->output(), Not(HasSubstr("Everything we upload")));
    EXPECT_THAT(all->errors(), EndsWith(" messages\n"));
    const auto none = show({"--search", "zebra \x1B[2J crossing"});
    EXPECT_EQ(none->exitCode(), 0);
    EXPECT_EQ(none->output(), "");
    EXPECT_EQ(none->errors(), std::string(looking) + "No message contains “zebra \uFFFD[2J crossing”.\n");
}

TEST_F(ShowProgram, SavesACopyInstead)
{
    const auto program = show({"--save", fix_.folder / "copy.zip"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_EQ(program->errors(), std::string(looking) + "Packing your chat…\nSaved as copy.zip on this Mac.\n");
    EXPECT_EQ(program->output(), "");
    EXPECT_TRUE(readFile(fix_.folder / "copy.zip").starts_with("PK"));
    EXPECT_THAT(sandbox_.log(), Not(HasSubstr("submissions")));
}

TEST_F(ShowProgram, SaysWhyACopyCannotBeSaved)
{
    const auto program = show({"--save", "/no/such/folder/copy.zip"});
    EXPECT_EQ(program->exitCode(), 1);
    EXPECT_THAT(program->errors(),
                EndsWith("Vorn couldn't write the archive to /no/such/folder/copy.zip: No such file or "
                         "directory.\n"));
}

TEST_F(ShowProgram, LeavesTheDatabaseAlone)
{
    const std::string before = readFile(fix_.database());
    const auto program = show({"--save", fix_.database()});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(), "--save must be a file of its own, not the database\n");
    EXPECT_EQ(readFile(fix_.database()), before);
}

TEST_F(ShowProgram, OpensTheUsersPagerInATerminal)
{
    fix_.link(sandbox_);
    const testing::ScopedEnvironment pager("PAGER", "sed 's/^Everything/PAGED &/'");
    const auto window = fix_.shareInWindow(sandbox_.url(), {"show"});
    window->waitFor("PAGED Everything we upload");
    EXPECT_EQ(window->exitCode(), 0);
}

TEST_F(ShowProgram, LeavesInterruptsToThePager)
{
    fix_.link(sandbox_);
    // A shell that is about to wait for a line may notice an interrupt only with that line.
    const testing::ScopedEnvironment pager("PAGER", "trap 'echo heard; ended=yes' INT; echo paging; "
                                                    "until [ \"$ended\" ]; do sleep 0.02; done; cat >/dev/null");
    const auto window = fix_.shareInWindow(sandbox_.url(), {"show"});
    window->waitFor("paging");
    window->type("\x03");
    window->waitFor("heard");
    EXPECT_EQ(window->exitCode(), 0);
    EXPECT_THAT(window->shown(), Not(HasSubstr("Stopped.")));
}

TEST(ShowProgramAlone, NeedsALink)
{
    const LinkedFixture fix;
    const auto program = fix.share("http://127.0.0.1:9", {"show"});
    EXPECT_EQ(program->exitCode(), 3);
    EXPECT_EQ(fix.errorsBesideTheWait(*program), "This Mac is not linked. Link it first.\n");
}

} // namespace
} // namespace vorn
