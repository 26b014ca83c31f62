#include "Platform/Base/InterruptWatch.h"

#include <array>
#include <atomic>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// The exit status of a child process that runs `body`; -1 when a signal ended it.
template <class Body>
int exitCodeOf(Body&& body)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(30); // a child that hangs must not hang the tests
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Waits until the watch has received a signal.
bool hears(const InterruptWatch& watch)
{
    while (!watch.cancelFlag().isCancelled()) sched_yield();
    return true;
}

TEST(InterruptWatch, TurnsSignalsIntoACancel)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(exitCodeOf([number] {
                      const InterruptWatch watch;
                      kill(getpid(), number);
                      return hears(watch) ? watch.exitStatus() : 0;
                  }),
                  128 + number);
    }
}

TEST(InterruptWatch, EndsTheProcessAtOnceWhileNothingIsOnDisk)
{
    EXPECT_EQ(exitCodeOf([] {
                  InterruptWatch watch;
                  const InterruptWatch::NothingOnDisk nothing(watch, "last words\n");
                  kill(getpid(), SIGTERM);
                  while (true) pause();
                  return 0;
              }),
              128 + SIGTERM);
}

TEST(InterruptWatch, LetsTheWorkUnwindOnceSomethingIsOnDisk)
{
    EXPECT_EQ(exitCodeOf([] {
                  InterruptWatch watch;
                  {
                      const InterruptWatch::NothingOnDisk nothing(watch, "");
                  }
                  kill(getpid(), SIGINT);
                  return hears(watch) ? 7 : 0;
              }),
              7);
}

TEST(InterruptWatch, SaysItsLastWords)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    exitCodeOf([&ends] {
        dup2(ends[1], STDERR_FILENO);
        InterruptWatch watch;
        const InterruptWatch::NothingOnDisk nothing(watch, "last words\n");
        kill(getpid(), SIGTERM);
        while (true) pause();
        return 0;
    });
    std::array<char, 64> said{};
    EXPECT_EQ(read(ends[0], said.data(), said.size()), 11);
    EXPECT_STREQ(said.data(), "last words\n");
}

TEST(InterruptWatch, TellsWhoWaitsAndGivesTheWorkTimeToUnwind)
{
    EXPECT_EQ(exitCodeOf([] {
                  std::atomic<bool> told = false;
                  const InterruptWatch watch(InterruptWatch::Deadline{[&told] { told = true; }, 10s, ""});
                  kill(getpid(), SIGINT);
                  while (!told) sched_yield();
                  return 5;
              }),
              5);
}

TEST(InterruptWatch, EndsWorkThatDoesNotUnwindInTime)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    EXPECT_EQ(exitCodeOf([&ends] {
                  dup2(ends[1], STDERR_FILENO);
                  const InterruptWatch watch(InterruptWatch::Deadline{{}, 1ms, "last words\n"});
                  kill(getpid(), SIGHUP);
                  while (true) pause();
                  return 0;
              }),
              128 + SIGHUP);
    std::array<char, 64> said{};
    EXPECT_EQ(read(ends[0], said.data(), said.size()), 11);
    EXPECT_STREQ(said.data(), "last words\n");
}

TEST(InterruptWatch, EndsWorkThatUnwindsAtASecondSignal)
{
    EXPECT_EQ(exitCodeOf([] {
                  const InterruptWatch watch(InterruptWatch::Deadline{{}, 1h, ""});
                  kill(getpid(), SIGINT);
                  hears(watch);
                  kill(getpid(), SIGTERM);
                  while (true) pause();
                  return 0;
              }),
              128 + SIGINT);
}

TEST(InterruptWatch, HearsSignalsAfterOneThatIsNotForIt)
{
    EXPECT_EQ(exitCodeOf([] {
                  const InterruptWatch watch;
                  kill(getpid(), SIGUSR1);
                  kill(getpid(), SIGINT);
                  return hears(watch) ? watch.exitStatus() : 0;
              }),
              128 + SIGINT);
}

TEST(InterruptWatch, LeavesIgnoredSignalsIgnored)
{
    EXPECT_EQ(exitCodeOf([] {
                  std::signal(SIGHUP, SIG_IGN);
                  const InterruptWatch watch;
                  kill(getpid(), SIGHUP);
                  kill(getpid(), SIGTERM); // second: a SIGHUP that was received would decide the status
                  return hears(watch) ? watch.exitStatus() : 0;
              }),
              128 + SIGTERM);
}

TEST(InterruptWatch, EndsWithoutASignal)
{
    EXPECT_EQ(exitCodeOf([] {
                  const bool calm = !InterruptWatch().cancelFlag().isCancelled();
                  return calm ? 3 : 4;
              }),
              3);
}

} // namespace
} // namespace vorn
