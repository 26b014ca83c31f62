#include "Platform/Base/IncompleteFile.h"

#include "Platform/Base/FileManager.h"
#include "Platform/Base/UUID.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <gmock/gmock.h>

#include <sys/resource.h>
#include <sys/wait.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::readFile;
using ::testing::SizeIs;
using testing::TemporaryFolder;
using testing::writeFile;

void put(const IncompleteFile& file, std::string_view content)
{
    ASSERT_EQ(write(file.descriptor().get(), content.data(), content.size()), static_cast<ssize_t>(content.size()));
}

TEST(IncompleteFile, GetsItsNameWhenItIsWhole)
{
    const TemporaryFolder folder;
    IncompleteFile file = IncompleteFile::named(folder.path());
    put(file, "whole");
    EXPECT_THAT(folder.names(), ElementsAre(::testing::StartsWith(".incomplete-")));
    EXPECT_TRUE(file.finish());
    EXPECT_TRUE(file.moveTo(folder / "file"));
    EXPECT_THAT(folder.names(), ElementsAre("file"));
    EXPECT_EQ(readFile(folder / "file"), "whole");
}

TEST(IncompleteFile, IsRemovedUnlessItWasMoved)
{
    const TemporaryFolder folder;
    {
        const IncompleteFile file = IncompleteFile::named(folder.path());
        EXPECT_THAT(folder.names(), SizeIs(1));
    }
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_FALSE(IncompleteFile::named(folder / "missing").isOpen());
}

TEST(IncompleteFile, StaysWhereItIsWhenItCannotBeMoved)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "occupied");
    for (const auto make : {&IncompleteFile::named, &IncompleteFile::unnamed}) {
        IncompleteFile file = make(folder.path());
        EXPECT_FALSE(file.moveTo(folder / "occupied"));
    }
    EXPECT_THAT(folder.names(), ElementsAre("occupied"));
}

TEST(IncompleteFile, IsSweptOnceNobodyWritesIt)
{
    const TemporaryFolder folder;
    const std::string left = IncompleteFile::names.make();
    writeFile(folder / left, "private");
    const IncompleteFile living = IncompleteFile::named(folder.path());
    ASSERT_THAT(folder.names(), SizeIs(2));
    IncompleteFile::sweep(folder.path());
    EXPECT_THAT(folder.names(), SizeIs(1));
    EXPECT_FALSE(fs::exists(folder / left));
    IncompleteFile::sweep(folder / "missing");
}

TEST(IncompleteFile, IsAllThatIsSwept)
{
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    writeFile(elsewhere / "kept", "text");
    const std::string prefix(IncompleteFile::names.prefix);
    for (const std::string& name :
         {prefix, prefix + "archive", prefix + newUUID() + ".zip", newUUID(), std::string("mine")})
        writeFile(folder / name, "text");
    fs::create_directory(folder / (prefix + newUUID()));
    fs::create_symlink(elsewhere / "kept", folder / (prefix + newUUID()));
    const auto before = folder.names();
    IncompleteFile::sweep(folder.path());
    EXPECT_EQ(folder.names(), before);
    EXPECT_THAT(elsewhere.names(), ElementsAre("kept"));
}

/// Has a child process write 4 MiB to `path`, during which the system kills it.
void writeAndBeKilled(const fs::path& path)
{
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none{0, 0};
        const rlimit some{1024 * 1024, 1024 * 1024};
        signal(SIGXFSZ, SIG_DFL);
        if (setrlimit(RLIMIT_CORE, &none) != 0 || setrlimit(RLIMIT_FSIZE, &some) != 0) _exit(1);
        FileManager::standard().writeAtomically(bytesOf(std::string(4 * 1024 * 1024, 'x')), path);
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(WTERMSIG(status), SIGXFSZ);
}

TEST(IncompleteFile, OfAKilledProcessIsGoneAfterTheNextWrite)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "old");
    writeAndBeKilled(folder / "file");
    EXPECT_EQ(readFile(folder / "file"), "old");
    if (IncompleteFile::unnamed(folder.path()).isOpen()) EXPECT_THAT(folder.names(), ElementsAre("file"));
    FileManager::standard().writeAtomically(bytesOf("new"), folder / "file");
    EXPECT_THAT(folder.names(), ElementsAre("file"));
    EXPECT_EQ(readFile(folder / "file"), "new");
}

} // namespace
} // namespace vorn
