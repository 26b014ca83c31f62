#include "Platform/Base/FileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

TEST(LinuxCopyFile, CopiesFilesThatHideTheirSize)
{
    const testing::TemporaryFolder folder;
    FileManager::standard().copyFile("/proc/self/status", folder / "status", {});
    EXPECT_THAT(testing::readFile(folder / "status"), ::testing::HasSubstr("Pid:"));
}

} // namespace
} // namespace vorn
