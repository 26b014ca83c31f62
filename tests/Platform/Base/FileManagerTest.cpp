#include "Platform/Base/FileManager.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <pwd.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::readFile;
using testing::ScopedEnvironment;
using testing::TemporaryFolder;
using testing::writeFile;

FileManager& files()
{
    return FileManager::standard();
}

unsigned modeOf(const fs::path& path)
{
    struct stat facts{};
    EXPECT_EQ(stat(path.c_str(), &facts), 0);
    return facts.st_mode & 07777U;
}

TEST(FileManager, FindsTheHomeDirectoryInTheUserDatabaseNotInTheEnvironment)
{
    const ScopedEnvironment home("HOME", "/somewhere/else");
    EXPECT_EQ(files().homeDirectory(), getpwuid(getuid())->pw_dir);
}

TEST(FileManager, TakesTheTemporaryDirectoryFromTheEnvironment)
{
    const ScopedEnvironment chosen("TMPDIR", "/chosen");
    EXPECT_EQ(files().temporaryDirectory(), "/chosen");
    const ScopedEnvironment none("TMPDIR", "");
    EXPECT_EQ(files().temporaryDirectory(), "/tmp");
}

TEST(FileManager, MakesFoldersThatOnlyThisUserMayEnter)
{
    const TemporaryFolder folder;
    files().createPrivateDirectory(folder / "far/above/private");
    for (const char* made : {"far", "far/above", "far/above/private"}) EXPECT_EQ(modeOf(folder / made), 0700U) << made;
    EXPECT_THROW(files().createPrivateDirectory(folder / "far/above/private"), fs::filesystem_error);
}

/// Sets the process's umask for its lifetime.
class ScopedMask {
public:
    explicit ScopedMask(mode_t mask) : old_(umask(mask)) {}
    ~ScopedMask() { umask(old_); }
    ScopedMask(ScopedMask&&) = delete;

private:
    mode_t old_;
};

TEST(FileManager, KeepsTheOwnersRightsWhateverTheMask)
{
    const TemporaryFolder folder;
    writeFile(folder / "from", "content");
    const ScopedMask mask(0777);
    files().createPrivateDirectory(folder / "private");
    files().copyFile(folder / "from", folder / "private/copy", {});
    files().writeAtomically(bytesOf("new"), folder / "private/written");
    EXPECT_EQ(modeOf(folder / "private"), 0700U);
    EXPECT_EQ(modeOf(folder / "private/copy"), 0600U);
    EXPECT_EQ(modeOf(folder / "private/written"), 0600U);
}

TEST(FileManager, WritesFilesWithTheLongestNames)
{
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    files().writeAtomically(bytesOf("new"), folder / name);
    EXPECT_EQ(readFile(folder / name), "new");
}

/// The path in the error of a failed copy.
fs::path blamed(const fs::path& from, const fs::path& to)
{
    try {
        files().copyFile(from, to, {});
    } catch (const fs::filesystem_error& error) {
        return error.path1();
    }
    return {};
}

TEST(FileManager, BlamesTheFileThatWasAtFault)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    EXPECT_EQ(blamed(folder / "missing", folder / "to"), folder / "missing");
    EXPECT_EQ(blamed(folder / "file", folder / "missing/to"), folder / "missing/to");
}

TEST(FileManager, CopiesNothingButFiles)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(blamed(folder / "pipe", folder / "to"), folder / "pipe"); // and does not wait for a writer
    EXPECT_EQ(blamed(folder.path(), folder / "to"), folder.path());
    EXPECT_FALSE(fs::exists(folder / "to"));
}

TEST(FileManager, CopiesContentIntoAPrivateFile)
{
    const TemporaryFolder folder;
    const std::string content(40 * 1024 * 1024 + 17, 'x'); // more than one piece
    writeFile(folder / "from", content);
    std::uint64_t told = 0;
    files().copyFile(folder / "from", folder / "to", [&told](std::uint64_t copied) { told = copied; });
    EXPECT_EQ(readFile(folder / "to"), content);
    EXPECT_EQ(modeOf(folder / "to"), 0600U);
    EXPECT_THAT(told, ::testing::AnyOf(0U, content.size())); // a clone copies nothing
}

TEST(FileManager, CopiesEmptyFiles)
{
    const TemporaryFolder folder;
    writeFile(folder / "empty", "");
    files().copyFile(folder / "empty", folder / "copy", {});
    EXPECT_EQ(readFile(folder / "copy"), "");
}

TEST(FileManager, NeverCopiesOverAFile)
{
    const TemporaryFolder folder;
    writeFile(folder / "from", "new");
    writeFile(folder / "to", "old");
    EXPECT_THROW(files().copyFile(folder / "from", folder / "to", {}), fs::filesystem_error);
    EXPECT_EQ(readFile(folder / "to"), "old");
}

TEST(FileManager, MakesNoCopyOfAMissingFile)
{
    const TemporaryFolder folder;
    EXPECT_THROW(files().copyFile(folder / "from", folder / "to", {}), fs::filesystem_error);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(FileManager, WritesAtomicallyOverWhatWasThere)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "old and longer");
    files().writeAtomically(bytesOf("new"), folder / "file");
    EXPECT_EQ(readFile(folder / "file"), "new");
    EXPECT_THAT(folder.names(), ElementsAre("file"));
    EXPECT_EQ(files().fileSize(folder / "file"), 3);
}

TEST(FileManager, LeavesNothingWhenAnAtomicWriteFails)
{
    const TemporaryFolder folder;
    EXPECT_THROW(files().writeAtomically(bytesOf("new"), folder / "missing/file"), fs::filesystem_error);
    fs::create_directory(folder / "occupied");
    writeFile(folder / "occupied/inside", "");
    EXPECT_THROW(files().writeAtomically(bytesOf("new"), folder / "occupied"), fs::filesystem_error);
    EXPECT_THAT(folder.names(), ElementsAre("occupied"));
}

TEST(FileManager, WritesToAPlainNameInTheCurrentFolder)
{
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    files().writeAtomically(bytesOf("here"), "name");
    fs::current_path(before);
    EXPECT_EQ(readFile(folder / "name"), "here");
}

TEST(FileManager, RemovesFoldersAndWhatIsNotThere)
{
    const TemporaryFolder folder;
    fs::create_directories(folder / "a/b");
    writeFile(folder / "a/b/c", "x");
    files().remove(folder / "a");
    files().remove(folder / "a");
    EXPECT_FALSE(files().fileExists(folder / "a"));
}

TEST(FileManager, ThrowsNothingWhenItLooksForAFile)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_TRUE(files().fileExists(folder / "file"));
    for (const std::string& name : {std::string("missing"), std::string("missing/file"), std::string("file/inside"),
                                    std::string("loop"), std::string(300, 'n')}) {
        EXPECT_FALSE(files().fileExists(folder / name)) << name;
    }
}

TEST(FileManager, TellsRefusalsFromOtherFailures)
{
    const auto failure = [](std::errc code) { return fs::filesystem_error("", std::make_error_code(code)); };
    EXPECT_TRUE(isPermissionDenied(failure(std::errc::permission_denied)));
    EXPECT_TRUE(isPermissionDenied(failure(std::errc::operation_not_permitted)));
    EXPECT_FALSE(isPermissionDenied(failure(std::errc::no_space_on_device)));
}

} // namespace
} // namespace vorn
