#include "Platform/Base/FileManager.h"
#include "Platform/Base/IncompleteFile.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <gmock/gmock.h>

#include <sys/wait.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using testing::TemporaryFolder;

TEST(UnnamedFile, LeavesNothingWhenItsProcessIsKilled)
{
    const TemporaryFolder folder;
    if (!IncompleteFile::unnamed(folder.path()).isOpen()) GTEST_SKIP() << "this file system has no unnamed files";
    const pid_t child = fork();
    if (child == 0) {
        const IncompleteFile file = IncompleteFile::unnamed(folder.path());
        if (write(file.descriptor().get(), "private", 7) == 7) raise(SIGKILL);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(UnnamedFile, IsLinkedIntoItsPlaceAndReplacesWhatIsThere)
{
    const TemporaryFolder folder;
    if (!IncompleteFile::unnamed(folder.path()).isOpen()) GTEST_SKIP() << "this file system has no unnamed files";
    for (const char* content : {"one", "two"}) {
        IncompleteFile file = IncompleteFile::unnamed(folder.path());
        ASSERT_EQ(write(file.descriptor().get(), content, 3), 3);
        EXPECT_TRUE(file.moveTo(folder / "file"));
        EXPECT_THAT(folder.names(), ElementsAre("file"));
        EXPECT_EQ(testing::readFile(folder / "file"), content);
    }
}

// A file that replaces another has a temporary name first, under which it must not be swept.
TEST(UnnamedFile, IsSweptByNobodyWhileItHasAName)
{
    const TemporaryFolder folder;
    IncompleteFile file = IncompleteFile::unnamed(folder.path());
    if (!file.isOpen()) GTEST_SKIP() << "this file system has no unnamed files";
    std::filesystem::create_directory(folder / "folder");
    EXPECT_FALSE(file.moveTo(folder / "folder")) << "a file replaces no folder";
    ASSERT_TRUE(file.hasName());
    IncompleteFile::sweep(folder.path());
    EXPECT_THAT(folder.names(), ElementsAre(StartsWith(std::string(IncompleteFile::names.prefix)), "folder"));
}

} // namespace
} // namespace vorn
