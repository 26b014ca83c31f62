#include "Platform/Desktop/SystemWorkspace.h"

#include "tests/Platform/Desktop/RecordingProgram.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::RecordingProgram;

TEST(MacWorkspace, UsesTheSystemsPrograms)
{
    EXPECT_EQ(DesktopPrograms::ofSystem().open, "/usr/bin/open");
    EXPECT_EQ(DesktopPrograms::ofSystem().shell, "/bin/sh");
}

TEST(MacWorkspace, RevealsTheApplicationInTheFinder)
{
    const RecordingProgram opener;
    SystemWorkspace("/Applications/My Vorn.app", [] {}, {.open = opener.path(), .shell = ""}).revealApplication();
    EXPECT_EQ(opener.arguments(), "-R\n/Applications/My Vorn.app\n");
}

TEST(MacWorkspace, RevealsNothingWithoutItsProgram)
{
    EXPECT_NO_THROW(SystemWorkspace("/Vorn.app", [] {}, {.open = "/nowhere/open", .shell = ""}).revealApplication());
}

} // namespace
} // namespace vorn
