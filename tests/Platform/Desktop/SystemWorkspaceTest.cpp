// Common to all systems: which program is started, and how its exit status is interpreted.
#include "Platform/Desktop/SystemWorkspace.h"

#include "tests/Platform/Desktop/RecordingProgram.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::RecordingProgram;

struct SystemWorkspaceTest : ::testing::Test {
    int terminations = 0;

    SystemWorkspace workspace(const std::string& application, const DesktopPrograms& programs)
    {
        return {application, [this] { ++terminations; }, programs};
    }
};

TEST_F(SystemWorkspaceTest, OpensAURL)
{
    const RecordingProgram opener;
    EXPECT_TRUE(workspace("/app", {.open = opener.path(), .shell = ""}).open("scheme:path?a&b=$HOME"));
    EXPECT_EQ(opener.arguments(), "scheme:path?a&b=$HOME\n");
}

TEST_F(SystemWorkspaceTest, KnowsThatNobodyTookAURL)
{
    const RecordingProgram opener("exit 4");
    EXPECT_FALSE(workspace("/app", {.open = opener.path(), .shell = ""}).open("scheme:nobody"));
    EXPECT_FALSE(workspace("/app", {.open = "/nowhere/open", .shell = ""}).open("scheme:nobody"));
}

TEST_F(SystemWorkspaceTest, TakesWaitingForAUserAsTaken)
{
    const RecordingProgram opener("exec sleep 4; exit 4");
    EXPECT_TRUE(workspace("/app", {.open = opener.path(), .shell = ""}).open("scheme:dialog"));
}

TEST_F(SystemWorkspaceTest, StartsABundleAnewAndEnds)
{
    const RecordingProgram shell;
    workspace("/Applications/My Vorn.app", {.open = "", .shell = shell.path()}).relaunch();
    EXPECT_EQ(terminations, 1);
    EXPECT_EQ(shell.arguments(), "-c\nsleep 1; /usr/bin/open \"$0\"\n/Applications/My Vorn.app\n");
}

TEST_F(SystemWorkspaceTest, JustEndsWithoutABundle)
{
    const RecordingProgram shell;
    workspace("/usr/bin/VornMac", {.open = "", .shell = shell.path()}).relaunch();
    EXPECT_EQ(terminations, 1);
    EXPECT_FALSE(shell.wasStarted());
}

TEST_F(SystemWorkspaceTest, StaysWhenNothingWouldStartItAnew)
{
    workspace("/Applications/Vorn.app", {.open = "", .shell = "/nowhere/sh"}).relaunch();
    EXPECT_EQ(terminations, 0);
}

} // namespace
} // namespace vorn
