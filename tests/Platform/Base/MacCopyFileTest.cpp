#include "Platform/Base/CopyFile.h"
#include "tests/Platform/Base/MacCopier.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace vorn::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

unsigned modeOf(const fs::path& path)
{
    struct stat facts{};
    EXPECT_EQ(stat(path.c_str(), &facts), 0);
    return facts.st_mode & 07777U;
}

void setMode(const fs::path& path, mode_t mode)
{
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
}

/// A folder with a file "from", on a volume that shares blocks between files or on one that does not.
class MacCopyFile : public ::testing::TestWithParam<bool> {
protected:
    MacCopyFile()
    {
        macCopier() = {.clones = GetParam()};
        writeFile(from_, content_);
    }

    /// The code of the failure to copy, and the file at fault.
    std::pair<int, fs::path> failure() const
    {
        try {
            copyFileContent(from_, to_, {});
        } catch (const fs::filesystem_error& error) {
            return {error.code().value(), error.path1()};
        }
        return {};
    }

    const TemporaryFolder folder_;
    const fs::path from_ = folder_ / "from";
    fs::path to_ = folder_ / "to";
    const std::string content_ = std::string(200'000, 'x') + "the end"; // more than one piece
};

INSTANTIATE_TEST_SUITE_P(Volumes, MacCopyFile, ::testing::Bool(),
                         [](const auto& volume) { return volume.param ? "Clones" : "Copies"; });

TEST_P(MacCopyFile, CopiesContentIntoAPrivateFile)
{
    for (const mode_t mode : {0644U, 0600U, 0400U}) {
        SCOPED_TRACE(mode);
        setMode(from_, mode);
        copyFileContent(from_, to_, {});
        EXPECT_EQ(readFile(to_), content_);
        EXPECT_EQ(modeOf(to_), 0600U);
        EXPECT_EQ(modeOf(from_), mode);
        fs::remove(to_);
    }
    EXPECT_EQ(macCopier().clonesMade, GetParam() ? 3 : 0);
    EXPECT_EQ(macCopier().pieces, GetParam() ? 0 : 12);
}

TEST_P(MacCopyFile, CopiesAnEmptyFile)
{
    writeFile(from_, "");
    copyFileContent(from_, to_, {});
    EXPECT_EQ(readFile(to_), "");
    EXPECT_EQ(modeOf(to_), 0600U);
}

TEST_P(MacCopyFile, CopiesWhatALinkLeadsTo)
{
    setMode(from_, 0644);
    fs::create_symlink(from_, folder_ / "link");
    copyFileContent(folder_ / "link", to_, {});
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(to_)));
    EXPECT_EQ(readFile(to_), content_);
    EXPECT_EQ(modeOf(to_), 0600U);
    EXPECT_EQ(modeOf(from_), 0644U);
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
}

TEST_P(MacCopyFile, TellsHowMuchItCopied)
{
    std::vector<std::uint64_t> told;
    copyFileContent(from_, to_, [&told](std::uint64_t copied) { told.push_back(copied); });
    if (GetParam()) {
        EXPECT_THAT(told, IsEmpty()) << "a clone copies nothing";
    } else {
        EXPECT_THAT(told, ElementsAre(65'536, 131'072, 196'608, content_.size()));
    }
}

TEST_P(MacCopyFile, NeverCopiesOverAFile)
{
    writeFile(to_, "old");
    EXPECT_EQ(failure(), std::pair(EEXIST, to_));
    EXPECT_EQ(readFile(to_), "old");
}

TEST_P(MacCopyFile, NeverWritesThroughALink)
{
    fs::create_symlink(folder_ / "elsewhere", to_);
    EXPECT_EQ(failure(), std::pair(EEXIST, to_));
    EXPECT_THAT(folder_.names(), ElementsAre("from", "to"));
}

TEST_P(MacCopyFile, BlamesTheFolderOfTheCopyOnTheCopy)
{
    to_ = folder_ / "missing/to";
    EXPECT_EQ(failure(), std::pair(ENOENT, to_));
}

TEST_P(MacCopyFile, MakesNoCopyOfWhatIsNoFile)
{
    fs::remove(from_);
    EXPECT_EQ(failure(), std::pair(ENOENT, from_));
    EXPECT_THAT(folder_.names(), IsEmpty());
    ASSERT_EQ(mkfifo(from_.c_str(), 0600), 0);
    EXPECT_EQ(failure(), std::pair(EINVAL, from_)) << "nobody writes into the pipe";
    fs::remove(from_);
    fs::create_directory(from_);
    EXPECT_EQ(failure(), std::pair(EISDIR, from_));
    EXPECT_THAT(folder_.names(), ElementsAre("from"));
}

/// Behaviour on one kind of volume only.
class MacCopyFileByPieces : public MacCopyFile {};
class MacCopyFileByClone : public MacCopyFile {};
INSTANTIATE_TEST_SUITE_P(Volumes, MacCopyFileByPieces, ::testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Volumes, MacCopyFileByClone, ::testing::Values(true));

TEST_P(MacCopyFileByClone, UnlocksTheCloneOfALockedFile)
{
    macCopier().locksClones = true;
    copyFileContent(from_, to_, {});
    EXPECT_FALSE(macCopier().locked);
    EXPECT_EQ(modeOf(to_), 0600U);
}

TEST_P(MacCopyFileByPieces, EndsWithWhatTheProgressThrows)
{
    const auto stop = [](std::uint64_t) { throw std::out_of_range("enough"); };
    EXPECT_THROW(copyFileContent(from_, to_, stop), std::out_of_range);
    EXPECT_EQ(macCopier().pieces, 1);
}

TEST_P(MacCopyFileByPieces, EndsWhenAWriteFails)
{
    macCopier().writeError = ENOSPC;
    EXPECT_EQ(failure(), std::pair(ENOSPC, to_));
    EXPECT_FALSE(macCopier().wentOnAfterError);
}

} // namespace
} // namespace vorn::testing
