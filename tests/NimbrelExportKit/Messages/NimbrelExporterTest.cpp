#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

namespace vorn {
namespace {

using ::testing::IsEmpty;
using testing::MessagesFixture;
using testing::RefusingFileManager;
using ::testing::SizeIs;

class NimbrelExporterTest : public ::testing::Test {
protected:
    testing::TemporaryFolder home, temporary;
    RefusingFileManager files{temporary.path()};
    const std::filesystem::path source = home / "chat.db";
    const std::vector<std::string> handles = {MessagesFixture::assistant};

    NimbrelExporter exporter(int attempts = NimbrelExporter::usualAttempts) { return {source, attempts, files}; }

    void writeHistory(int messages = 2) const
    {
        MessagesFixture fixture(source);
        fixture.assistantChat();
        fixture.database().execute("BEGIN");
        for (int i = 0; i < messages; ++i) fixture.message();
        fixture.database().execute("COMMIT");
    }
    NimbrelExportError failure()
    {
        try {
            exporter().export_(handles);
        } catch (const NimbrelExportError& error) {
            return error;
        }
        ADD_FAILURE() << "the export succeeded";
        return {NimbrelExportError::NoDatabase{}};
    }
    /// Damages a copy as Messages would by writing to the database while it is copied.
    static void spoil(const std::filesystem::path& copy)
    {
        if (copy.filename() == "chat.db") testing::writeFile(copy, std::string(4096, 'x'));
    }
};

TEST_F(NimbrelExporterTest, ReadsTheConversationAndDeletesTheCopy)
{
    writeHistory();
    const NimbrelExportResult result = exporter().export_(handles);
    EXPECT_THAT(result.chats, SizeIs(1));
    EXPECT_THAT(result.messages, SizeIs(2));
    EXPECT_EQ(files.created, 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, LeavesTheSourceAndItsLogAsTheyAre)
{
    MessagesFixture fixture(source);
    fixture.assistantChat();
    fixture.message();
    const auto bytes = [this] { return testing::readFile(source) + testing::readFile(source.string() + "-wal"); };
    const std::string before = bytes();
    const auto names = home.names();
    EXPECT_THAT(exporter().export_(handles).messages, SizeIs(1));
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(home.names(), names);
}

TEST_F(NimbrelExporterTest, WithoutADatabaseMakesNoDirectory)
{
    EXPECT_EQ(failure(), NimbrelExportError(NimbrelExportError::NoDatabase{}));
    EXPECT_EQ(files.created, 0);
}

TEST_F(NimbrelExporterTest, GivesUpAfterThreeDamagedCopies)
{
    writeHistory();
    files.afterCopy = spoil;
    files.beforeCreate = [this](const auto&) { EXPECT_THAT(temporary.names(), IsEmpty()) << "one copy at a time"; };
    EXPECT_EQ(failure(), NimbrelExportError(NimbrelExportError::SnapshotUnreadable{}));
    EXPECT_EQ(files.created, 3);
    EXPECT_EQ(files.removed, 3);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, SucceedsWhenTheSecondCopyIsSound)
{
    writeHistory();
    files.afterCopy = [this](const auto& copy) {
        if (files.created == 1) spoil(copy);
    };
    EXPECT_THAT(exporter().export_(handles).messages, SizeIs(2));
    EXPECT_EQ(files.created, 2);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, IgnoresThatADamagedCopyCannotBeDeleted)
{
    writeHistory();
    files.afterCopy = spoil;
    files.beforeRemove = RefusingFileManager::refuse(std::errc::io_error);
    EXPECT_EQ(failure(), NimbrelExportError(NimbrelExportError::SnapshotUnreadable{}));
    EXPECT_EQ(files.created, 3);
}

TEST_F(NimbrelExporterTest, MakesAtLeastOneAttempt)
{
    EXPECT_EQ(exporter(0).attempts(), 1);
    EXPECT_EQ(exporter(-5).attempts(), 1);
    EXPECT_EQ(exporter(3).attempts(), 3);
    writeHistory();
    files.afterCopy = spoil;
    EXPECT_THROW(exporter(0).export_(handles), NimbrelExportError);
    EXPECT_EQ(files.created, 1);
}

TEST_F(NimbrelExporterTest, ReportsOtherFailuresOfSQLiteAtOnce)
{
    SQLiteDatabase(source.string(), SQLiteDatabase::Mode::create).execute("CREATE TABLE unrelated (id INTEGER)");
    EXPECT_EQ(failure(), NimbrelExportError(NimbrelExportError::Database{
                             SQLiteError(SQLiteError::Stage::prepare, 1, "no such table: chat")}));
    EXPECT_EQ(files.created, 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

/// A substitute for a table, with its name.
struct Computed {
    const char* table;
    const char* statements;
};

TEST_F(NimbrelExporterTest, RefusesRowsThatTheDatabaseComputes)
{
    constexpr Computed unusual[] = {
        {"message",
         "CREATE VIEW message AS SELECT 1 AS ROWID, 'g' AS guid, hex(zeroblob(350000000)) AS text, 1 AS date,"
         " 0 AS is_from_me"},
        {"MESSAGE", "CREATE VIEW MESSAGE AS SELECT 1 AS ROWID"},
        {"message", "CREATE VIRTUAL TABLE message USING fts5(guid, text, date, is_from_me)"},
        {"message", "CREATE TABLE message (guid, date, is_from_me, text AS (hex(zeroblob(1000))))"},
        {"message", "CREATE TABLE message (guid, date, is_from_me, text AS (guid || 'x') STORED)"},
        {"chat", "CREATE VIEW chat AS SELECT 1 AS ROWID, 'c' AS guid, 45 AS style"},
        {"handle", "CREATE VIEW handle AS SELECT 1 AS ROWID, '+15550102030' AS id"},
        {"chat_message_join", "CREATE VIEW chat_message_join AS SELECT 1 AS chat_id, 1 AS message_id"},
        {"chat_handle_join", "CREATE VIEW chat_handle_join AS SELECT 1 AS chat_id, 1 AS handle_id"},
        {"attachment", "CREATE VIEW attachment AS SELECT 1 AS ROWID, 'a' AS mime_type"},
        {"message_attachment_join",
         "CREATE VIEW message_attachment_join AS SELECT 1 AS message_id, 1 AS attachment_id"},
    };
    for (const auto& [table, statements] : unusual) {
        SCOPED_TRACE(statements);
        std::filesystem::remove(source);
        {
            const MessagesFixture fixture(source);
            fixture.database().execute(std::string("ALTER TABLE ") + table + " RENAME TO stored; " + statements);
        }
        EXPECT_EQ(failure(),
                  NimbrelExportError(NimbrelExportError::Database{SQLiteError(
                      SQLiteError::Stage::prepare, 1, std::string(table) + " does not store what it holds")}));
        EXPECT_THAT(temporary.names(), IsEmpty());
    }
}

TEST_F(NimbrelExporterTest, PassesOverGeneratedColumnsThatItDoesNotNeed)
{
    writeHistory();
    SQLiteDatabase(source.string(), SQLiteDatabase::Mode::create)
        .execute("ALTER TABLE message ADD COLUMN extra AS (hex(zeroblob(1000)));"
                 "ALTER TABLE message DROP COLUMN service; ALTER TABLE message ADD COLUMN service AS ('x')");
    const NimbrelExportResult result = exporter().export_(handles);
    ASSERT_THAT(result.messages, SizeIs(2));
    EXPECT_EQ(result.messages[0].service, std::nullopt);
}

TEST_F(NimbrelExporterTest, RefusesAMessageLargerThanAnyoneWrites)
{
    {
        MessagesFixture fixture(source);
        fixture.assistantChat();
        fixture.message({.text = std::string(64 * 1024 * 1024, 'x')});
    }
    EXPECT_EQ(failure(), NimbrelExportError(NimbrelExportError::Database{
                             SQLiteError(SQLiteError::Stage::step, 18, "string or blob too big")}));
}

TEST_F(NimbrelExporterTest, PassesFailuresOfTheFileSystemOnAtOnce)
{
    writeHistory();
    files.beforeCopy = RefusingFileManager::refuse(std::errc::no_space_on_device);
    EXPECT_THROW(exporter().export_(handles), std::filesystem::filesystem_error);
    EXPECT_EQ(files.created, 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, OfNoHandlesIsEmpty)
{
    writeHistory();
    EXPECT_EQ(exporter().export_({}), NimbrelExportResult{});
    EXPECT_EQ(exporter().export_({"", " "}), NimbrelExportResult{});
    EXPECT_EQ(exporter().export_({"stranger@example.com"}), NimbrelExportResult{});
}

/// Counts the unnamed files that SQLite opens to spill what it cannot keep in memory.
class SpillWatch {
public:
    SpillWatch()
    {
        spills = 0;
        vfs_.zName = "watched";
        vfs_.xOpen = [](sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* opened) {
            if (name == nullptr) ++spills;
            return sqlite3_vfs_find(usual_)->xOpen(vfs, name, file, flags, opened);
        };
        sqlite3_vfs_register(&vfs_, 1);
    }
    ~SpillWatch() { sqlite3_vfs_unregister(&vfs_); }
    SpillWatch(SpillWatch&&) = delete;

    static inline int spills = 0;

private:
    static inline const char* usual_ = sqlite3_vfs_find(nullptr)->zName;
    sqlite3_vfs vfs_ = *sqlite3_vfs_find(nullptr);
};

TEST_F(NimbrelExporterTest, SortsInMemory)
{
    {
        MessagesFixture fixture(source);
        fixture.assistantChat();
        fixture.database().execute("BEGIN");
        for (int i = 0; i < 6000; ++i) fixture.message({.text = std::string(1000, 'x')});
        fixture.database().execute("COMMIT");
    }
    const SpillWatch watch;
    SQLiteDatabase(source.string(), SQLiteDatabase::Mode::queryOnly)
        .run("SELECT * FROM message ORDER BY text, ROWID DESC", {});
    EXPECT_GT(SpillWatch::spills, 0) << "a sort of this size spills unless it is told not to";
    SpillWatch::spills = 0;
    EXPECT_THAT(exporter().export_(handles).messages, SizeIs(6000));
    EXPECT_EQ(SpillWatch::spills, 0) << "private text was written outside the private folder";
}

TEST_F(NimbrelExporterTest, TellsHowFarItHasCome)
{
    writeHistory(5000);
    std::uint64_t rows = 0;
    exporter().export_(handles, [&](const ExportProgress& progress) {
        if (progress.phase == ExportProgress::Phase::reading) rows = progress.done;
    });
    EXPECT_EQ(rows, 4096U);
}

TEST_F(NimbrelExporterTest, TellsThatItReadsBeforeTheFirstRow)
{
    writeHistory(5000);
    std::vector<std::uint64_t> told;
    exporter().export_(handles, [&](const ExportProgress& progress) {
        if (progress.phase == ExportProgress::Phase::reading) told.push_back(progress.done);
    });
    EXPECT_EQ(told.front(), 0U); // while SQLite sorts
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
}

TEST_F(NimbrelExporterTest, PassesOnWhatIsThrownWhileSQLiteSorts)
{
    writeHistory(5000);
    const auto refuse = [](const ExportProgress& progress) {
        if (progress.phase == ExportProgress::Phase::reading) throw std::out_of_range("told enough");
    };
    EXPECT_THROW(exporter().export_(handles, refuse), std::out_of_range);
    EXPECT_EQ(files.created, 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, StopsSoonAfterACancelAndDeletesTheCopy)
{
    writeHistory(5000);
    CancelFlag cancel;
    files.afterCopy = [&cancel](const auto&) { cancel.cancel(); };
    EXPECT_THROW(exporter().export_(handles, {}, cancel), Cancelled);
    EXPECT_EQ(files.created, 1);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST_F(NimbrelExporterTest, StopsInTheMiddleOfReading)
{
    writeHistory(20'000);
    CancelFlag cancel;
    std::uint64_t rows = 0;
    const auto stopWhileReading = [&](const ExportProgress& progress) {
        if (progress.phase != ExportProgress::Phase::reading || progress.done == 0) return;
        rows = progress.done;
        cancel.cancel();
    };
    EXPECT_THROW(exporter().export_(handles, stopWhileReading, cancel), Cancelled);
    EXPECT_EQ(rows, 4096U);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

} // namespace
} // namespace vorn
