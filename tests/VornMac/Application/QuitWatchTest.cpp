#include "VornMac/Application/QuitWatch.h"

#include <csignal>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

/// The exit status of a child process that runs `body`; -1 if a signal ended it.
template <class Body>
int exitCodeOf(const Body& body)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(60); // a child that hangs must not hang the tests
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(QuitWatch, PostsOnceWhatQuitsTheApplication)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EQ(exitCodeOf([number] {
                      QuitWatch watch;
                      MainContext context;
                      int quits = 0;
                      const QuitWatch::Delivery delivery(watch, context, [&quits] { ++quits; });
                      kill(getpid(), number);
                      context.runUntil([&quits] { return quits > 0; });
                      context.runUntilIdle();
                      return quits == 1 ? watch.exitStatus() : 1;
                  }),
                  128 + number);
    }
}

TEST(QuitWatch, RemembersASignalThatCameBeforeThereWasAContext)
{
    EXPECT_EQ(exitCodeOf([] {
                  QuitWatch watch;
                  kill(getpid(), SIGTERM);
                  while (watch.exitStatus() == 0) sched_yield();
                  MainContext context;
                  int quits = 0;
                  const QuitWatch::Delivery delivery(watch, context, [&quits] { ++quits; });
                  context.runUntil([&quits] { return quits > 0; });
                  return quits;
              }),
              1);
}

TEST(QuitWatch, PostsNothingWithoutAContext)
{
    EXPECT_EQ(exitCodeOf([] {
                  QuitWatch watch;
                  {
                      MainContext context;
                      const QuitWatch::Delivery delivery(watch, context, [] { _exit(9); });
                  }
                  kill(getpid(), SIGTERM);
                  while (watch.exitStatus() == 0) sched_yield();
                  return 3;
              }),
              3);
}

TEST(QuitWatch, ASecondSignalEndsAnApplicationThatHangs)
{
    EXPECT_EQ(exitCodeOf([] {
                  const QuitWatch watch;
                  kill(getpid(), SIGTERM);
                  while (watch.exitStatus() == 0) sched_yield();
                  kill(getpid(), SIGTERM);
                  while (true) pause();
                  return 0;
              }),
              128 + SIGTERM);
}

TEST(QuitWatch, GivesNoStatusWithoutASignal)
{
    EXPECT_EQ(exitCodeOf([] { return QuitWatch().exitStatus(); }), 0);
}

} // namespace
} // namespace vorn
