#include "Platform/Desktop/SystemWorkspace.h"

#include "tests/Platform/Desktop/FileManagerService.h"
#include "tests/Platform/Desktop/RecordingProgram.h"
#include "tests/Platform/Keychain/TestBus.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::RecordingProgram;

TEST(LinuxWorkspace, OpensURLsByTheDesktopsProgramInThePath)
{
    const RecordingProgram opener;
    std::filesystem::rename(opener.path(), opener.folder() / "xdg-open");
    const testing::ScopedEnvironment path("PATH", opener.folder().native() + ":/usr/bin:/bin");
    EXPECT_TRUE(SystemWorkspace("/usr/bin/VornMac", [] {}).open("https://vorn.example/"));
    EXPECT_EQ(opener.arguments(), "https://vorn.example/\n");
}

TEST(LinuxWorkspace, AsksTheFileManagerToShowTheProgram)
{
    const testing::TestBus bus;
    testing::FileManagerService service(bus.address());
    const RecordingProgram opener;
    SystemWorkspace("/opt/my vorn/VornMac", [] {}, {.open = opener.path(), .shell = ""}).revealApplication();
    EXPECT_EQ(service.shownItem(), "file:///opt/my%20vorn/VornMac");
    EXPECT_FALSE(opener.wasStarted());
}

TEST(LinuxWorkspace, OpensTheFolderWhereNoFileManagerAnswers)
{
    const testing::TestBus bus;
    const RecordingProgram opener;
    SystemWorkspace("/opt/my vorn/VornMac", [] {}, {.open = opener.path(), .shell = ""}).revealApplication();
    EXPECT_EQ(opener.arguments(), "/opt/my vorn\n");
}

TEST(LinuxWorkspace, OpensTheFolderWhereThereIsNoBus)
{
    const testing::ScopedEnvironment noBus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    const RecordingProgram opener;
    SystemWorkspace("/opt/vorn/VornMac", [] {}, {.open = opener.path(), .shell = ""}).revealApplication();
    EXPECT_EQ(opener.arguments(), "/opt/vorn\n");
}

} // namespace
} // namespace vorn
