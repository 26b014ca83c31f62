#include "VornMac/Application/ProcessStart.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace vorn {
namespace {

TEST(ProcessStart, IsFromAShellUnlessTheSystemOpenedTheApplication)
{
    EXPECT_TRUE((ProcessStart{.parent = 4711, .hasTerminal = true}.isFromShell()));
    EXPECT_TRUE((ProcessStart{.parent = 4711, .hasTerminal = false}.isFromShell())) << "a script";
    EXPECT_TRUE((ProcessStart{.parent = 1, .hasTerminal = true}.isFromShell())) << "a container's shell";
    EXPECT_FALSE((ProcessStart{.parent = 1, .hasTerminal = false}.isFromShell()));
}

TEST(ProcessStart, KnowsThisProcess)
{
    EXPECT_EQ(ProcessStart::current().parent, getppid());
    EXPECT_EQ(ProcessStart::current().hasTerminal, isatty(STDERR_FILENO) != 0);
}

} // namespace
} // namespace vorn
