#include "VornMac/Application/RuntimeFolder.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <system_error>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

struct RuntimeFolderTest : ::testing::Test {
    testing::TemporaryFolder runtime, temporary;
    testing::ScopedEnvironment runtimeVariable{"XDG_RUNTIME_DIR", runtime.path().native()};
    testing::ScopedEnvironment temporaryVariable{"TMPDIR", temporary.path().native()};
    const fs::path own = temporary / ("vorn-" + std::to_string(geteuid()));
};

TEST_F(RuntimeFolderTest, IsTheSystemsOwn)
{
    EXPECT_EQ(runtimeFolder(), runtime.path());
}

TEST_F(RuntimeFolderTest, IsAPrivateOneWhereTheSystemHasNone)
{
    for (const std::string& wrong : {std::string(), std::string("relative"), (runtime / "missing").native()}) {
        const testing::ScopedEnvironment variable("XDG_RUNTIME_DIR", wrong);
        EXPECT_EQ(runtimeFolder(), own) << wrong;
        EXPECT_EQ(runtimeFolder(), own) << "once more";
        EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_all);
    }
}

TEST_F(RuntimeFolderTest, IsNotOneThatOthersMayEnter)
{
    ASSERT_EQ(chmod(runtime.path().c_str(), 0755), 0);
    EXPECT_EQ(runtimeFolder(), own);
    ASSERT_EQ(chmod(own.c_str(), 0750), 0);
    EXPECT_THROW(runtimeFolder(), std::system_error);
}

TEST_F(RuntimeFolderTest, IsNotBehindALink)
{
    const testing::ScopedEnvironment none("XDG_RUNTIME_DIR", "");
    fs::create_directory_symlink(runtime.path(), own);
    EXPECT_THROW(runtimeFolder(), std::system_error);
    fs::remove(own);
    testing::writeFile(own, "");
    EXPECT_THROW(runtimeFolder(), std::system_error);
}

TEST_F(RuntimeFolderTest, IsNotAnotherUsers)
{
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give a folder away";
    ASSERT_EQ(chown(runtime.path().c_str(), 12345, 12345), 0);
    EXPECT_EQ(runtimeFolder(), own);
    ASSERT_EQ(chown(own.c_str(), 12345, 12345), 0);
    EXPECT_THROW(runtimeFolder(), std::system_error);
}

} // namespace
} // namespace vorn
