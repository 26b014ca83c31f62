#include "NimbrelExportKit/Messages/MessagesSnapshot.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::readFile;
using testing::RefusingFileManager;
using testing::TemporaryFolder;
using testing::writeFile;

class MessagesSnapshotTest : public ::testing::Test {
protected:
    TemporaryFolder home, temporary;
    RefusingFileManager files{temporary.path()};
    fs::path source = home / "chat.db";

    MessagesSnapshot take() { return MessagesSnapshot::take(source, files); }

    /// The reason why no snapshot can be taken.
    NimbrelExportError::Reason reasonOfFailure()
    {
        try {
            take();
        } catch (const NimbrelExportError& error) {
            return error.reason();
        }
        ADD_FAILURE() << "a snapshot was taken";
        return NimbrelExportError::SnapshotUnreadable{};
    }
};

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(MessagesSnapshotTest, CopiesTheDatabaseAloneWhenThereIsNoLog)
{
    writeFile(source, "database");
    writeFile(home / "chat.db-shm", "index");
    const MessagesSnapshot snapshot = take();
    EXPECT_THAT(namesIn(snapshot.directory()), ElementsAre("chat.db"));
    EXPECT_EQ(readFile(snapshot.databaseURL()), "database");
}

TEST_F(MessagesSnapshotTest, CopiesTheLogBesideTheDatabase)
{
    writeFile(source, "database");
    writeFile(home / "chat.db-wal", "log");
    const MessagesSnapshot snapshot = take();
    EXPECT_THAT(namesIn(snapshot.directory()), ElementsAre("chat.db", "chat.db-wal"));
    EXPECT_EQ(readFile(snapshot.directory() / "chat.db-wal"), "log");
}

TEST_F(MessagesSnapshotTest, LivesInAPrivateFolderOfItsOwnUntilItIsRemoved)
{
    writeFile(source, "database");
    MessagesSnapshot snapshot = take();
    const fs::path directory = snapshot.directory();
    EXPECT_EQ(directory.parent_path(), temporary.path());
    EXPECT_THAT(directory.filename().string(), ::testing::MatchesRegex("vorn-messages-[0-9A-F-]{36}"));
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all);
    snapshot.remove();
    EXPECT_FALSE(fs::exists(directory));
    snapshot.remove(); // harmless
}

TEST_F(MessagesSnapshotTest, IsDeletedWithItsLastOwner)
{
    writeFile(source, "database");
    {
        MessagesSnapshot first = take();
        const MessagesSnapshot owner = std::move(first);
        EXPECT_TRUE(fs::exists(owner.databaseURL()));
    }
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(MessagesSnapshotTest, OfAMissingDatabaseMakesNothing)
{
    EXPECT_EQ(reasonOfFailure(), NimbrelExportError::Reason(NimbrelExportError::NoDatabase{}));
    EXPECT_EQ(files.created, 0);
}

TEST_F(MessagesSnapshotTest, OfADatabaseThatDoesNotOpenIsDenied)
{
    writeFile(home / "file", "");
    source = home / "file/chat.db";
    EXPECT_EQ(reasonOfFailure(), NimbrelExportError::Reason(NimbrelExportError::AccessDenied{}));
    EXPECT_EQ(files.created, 0);
}

TEST_F(MessagesSnapshotTest, WhoseCopyIsRefusedIsDeniedAndLeavesNothing)
{
    writeFile(source, "database");
    for (const std::errc code : {std::errc::permission_denied, std::errc::operation_not_permitted}) {
        files.beforeCopy = RefusingFileManager::refuse(code);
        EXPECT_EQ(reasonOfFailure(), NimbrelExportError::Reason(NimbrelExportError::AccessDenied{}));
        EXPECT_THAT(temporary.names(), IsEmpty());
    }
}

TEST_F(MessagesSnapshotTest, WhoseTargetIsRefusedIsAFailureOfTheFileSystem)
{
    writeFile(source, "database");
    files.beforeCopy = [](const fs::path&) { RefusingFileManager::refuse(std::errc::permission_denied)("the/copy"); };
    EXPECT_THROW(take(), fs::filesystem_error);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(MessagesSnapshotTest, PassesOtherFailuresOfTheCopyOnAndLeavesNothing)
{
    writeFile(source, "database");
    files.beforeCopy = RefusingFileManager::refuse(std::errc::no_space_on_device);
    try {
        take();
        FAIL() << "a snapshot was taken";
    } catch (const fs::filesystem_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
    }
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(MessagesSnapshotTest, PassesFailuresOfTheLogsCopyOnAndLeavesNothing)
{
    writeFile(source, "database");
    writeFile(home / "chat.db-wal", "log");
    files.beforeCopy = [](const fs::path& path) {
        if (path.filename() == "chat.db-wal") RefusingFileManager::refuse(std::errc::permission_denied)(path);
    };
    EXPECT_THROW(take(), fs::filesystem_error);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(MessagesSnapshotTest, PassesAFailureToMakeTheFolderOn)
{
    writeFile(source, "database");
    files.beforeCreate = RefusingFileManager::refuse(std::errc::read_only_file_system);
    EXPECT_THROW(take(), fs::filesystem_error);
    EXPECT_EQ(files.copies, 0);
}

TEST_F(MessagesSnapshotTest, IgnoresAFailureToDelete)
{
    writeFile(source, "database");
    MessagesSnapshot snapshot = take();
    files.beforeRemove = RefusingFileManager::refuse(std::errc::io_error);
    snapshot.remove();
    EXPECT_TRUE(fs::exists(snapshot.directory()));
    files.beforeRemove = nullptr; // the destructor tries again
}

/// Reports each copy while the file exists, even if the file system clones files without reports.
class TellingFileManager : public RefusingFileManager {
public:
    using RefusingFileManager::RefusingFileManager;
    void copyFile(const fs::path& from, const fs::path& to, const CopyProgress& progress) override
    {
        RefusingFileManager::copyFile(from, to, {});
        progress(static_cast<std::uint64_t>(fileSize(to)));
    }
};

TEST_F(MessagesSnapshotTest, EndsACopyThatItsObserverStops)
{
    writeFile(source, "database");
    writeFile(home / "chat.db-wal", "log");
    TellingFileManager telling(temporary.path());
    for (const std::uint64_t last : {8U, 3U}) { // in the copy of the database, or in the log's
        const auto stop = [last](std::uint64_t copied) {
            if (copied == last) throw std::out_of_range("stopped");
        };
        EXPECT_THROW(MessagesSnapshot::take(source, telling, stop), std::out_of_range);
        EXPECT_THAT(temporary.names(), IsEmpty());
    }
    EXPECT_EQ(telling.copies, 3);
}

} // namespace
} // namespace vorn
