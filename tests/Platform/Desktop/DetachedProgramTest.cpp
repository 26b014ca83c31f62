#include "Platform/Desktop/DetachedProgram.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// The exit status of a shell that runs `script`.
std::optional<int> endOfScript(const std::string& script)
{
    return DetachedProgram("/bin/sh", {"-c", script}).waitForEnd(60s);
}

TEST(DetachedProgram, GivesItsExitStatus)
{
    EXPECT_EQ(endOfScript("exit 0"), 0);
    EXPECT_EQ(endOfScript("exit 3"), 3);
    EXPECT_EQ(endOfScript("kill -KILL $$"), 128 + SIGKILL);
}

TEST(DetachedProgram, PassesItsArgumentsAsTheyAre)
{
    const DetachedProgram program("/bin/sh", {"-c", R"(test "$0" = 'a "b" $c' && test "$1" = "")", "a \"b\" $c", ""});
    EXPECT_EQ(program.waitForEnd(60s), 0);
}

TEST(DetachedProgram, IsLookedForInThePath)
{
    const testing::TemporaryFolder folder;
    testing::writeFile(folder / "own-program", "#!/bin/sh\nexit 7\n");
    std::filesystem::permissions(folder / "own-program", std::filesystem::perms::owner_all);
    const testing::ScopedEnvironment path("PATH", folder.path().native());
    EXPECT_EQ(DetachedProgram("own-program", {}).waitForEnd(60s), 7);
}

TEST(DetachedProgram, SaysThatItCannotBeStarted)
{
    EXPECT_THROW(DetachedProgram("/nowhere/program", {}), std::system_error);
    EXPECT_THROW(DetachedProgram("no-program-of-this-name", {}), std::system_error);
}

TEST(DetachedProgram, StopsWaitingForOneThatStays)
{
    const testing::TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const DetachedProgram program("/bin/sh", {"-c", R"(read line < "$0"; exit 4)", pipe});
    EXPECT_EQ(program.waitForEnd(1ms), std::nullopt);
    testing::writeFile(pipe, "end\n");
    EXPECT_EQ(program.waitForEnd(60s), 4);
}

TEST(DetachedProgram, IsRemovedFromTheProcessesWhenItEnds)
{
    EXPECT_EQ(endOfScript("exit 0"), 0);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(DetachedProgram, InheritsNoFilesAndNoStreams)
{
    const int kept = open("/dev/null", O_RDONLY); // NOLINT: without O_CLOEXEC, so that a leak would show
    const int high = fcntl(kept, F_DUPFD, 100);
    EXPECT_EQ(
        endOfScript("test ! -e /dev/fd/" + std::to_string(kept) + " && test ! -e /dev/fd/" + std::to_string(high)), 0);
    EXPECT_EQ(endOfScript("test ! -t 0 && read line; test -z \"$line\" && echo lost && echo lost >&2"), 0);
    close(kept);
    close(high);
}

TEST(DetachedProgram, HearsTheSignalsThatThisProgramBlocksOrIgnores)
{
    sigset_t before{};
    sigset_t blocked{};
    sigemptyset(&blocked);
    for (const int number : {SIGTERM, SIGINT}) sigaddset(&blocked, number);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(endOfScript("kill -TERM $$; exit 0"), 128 + SIGTERM);
    EXPECT_EQ(endOfScript("kill -PIPE $$; exit 0"), 128 + SIGPIPE);
    std::signal(SIGPIPE, old);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(DetachedProgram, HasASessionOfItsOwn)
{
    const testing::TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const DetachedProgram program("/bin/sh", {"-c", R"(echo $$ > "$0"; read line < "$0")", pipe});
    const pid_t process = std::stoi(testing::readFile(pipe));
    EXPECT_EQ(getsid(process), process);
    testing::writeFile(pipe, "end\n");
    EXPECT_EQ(program.waitForEnd(60s), 0);
}

TEST(DetachedProgram, MayBeForgotten)
{
    const testing::TemporaryFolder folder;
    {
        const DetachedProgram program("/bin/sh",
                                      {"-c", R"(echo done > "$0/new"; mv "$0/new" "$0/here")", folder.path()});
    }
    while (!std::filesystem::exists(folder / "here")) sched_yield();
    EXPECT_EQ(testing::readFile(folder / "here"), "done\n");
}

TEST(DetachedProgram, DoesNotKnowTheEndWhereOthersReapIt)
{
    const auto old = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(endOfScript("exit 3"), std::nullopt);
    std::signal(SIGCHLD, old);
}

} // namespace
} // namespace vorn
