#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/Memory.h"

#include <string>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

constexpr int somebody = 65534; // not the superuser, who may read everything

/// The exit code of a child that runs `body`; -1 when a signal ended it.
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

/// Makes this an ordinary process of an ordinary user, whose other processes may read its memory.
void becomeOrdinary()
{
    if (geteuid() == 0 && setresuid(somebody, somebody, somebody) != 0) _exit(9);
    prctl(PR_SET_DUMPABLE, 1);
}

/// Whether another process of the same user may read the memory of this one.
bool isReadable()
{
    const std::string maps = "/proc/" + std::to_string(getpid()) + "/maps";
    return exitCodeOf([&maps] {
               prctl(PR_SET_DUMPABLE, 1); // undoes the setting inherited from the parent
               return FileDescriptor(open(maps.c_str(), O_RDONLY)) ? 1 : 0;
           }) == 1;
}

TEST(PrivateMemory, IsClosedToOtherProgramsOfTheUser)
{
    const int seen = exitCodeOf([] {
        becomeOrdinary();
        const bool before = isReadable();
        memory::keepPrivate();
        return (before ? 1 : 0) + (isReadable() ? 2 : 0);
    });
    EXPECT_EQ(seen, 1);
}

TEST(PrivateMemory, IsLeftInNoFile)
{
    EXPECT_EQ(exitCodeOf([] {
                  memory::keepPrivate();
                  rlimit core{};
                  getrlimit(RLIMIT_CORE, &core);
                  return core.rlim_cur == 0 && prctl(PR_GET_DUMPABLE) == 0 ? 0 : 1;
              }),
              0);
}

} // namespace
} // namespace vorn
