#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <random>

namespace vorn {
namespace {

using ::testing::IsEmpty;
using testing::MessagesFixture;
using testing::readFile;
using testing::writeFile;

constexpr int messageCount = 300;

/// A history of several pages whose newest half is only in the log, and what damage does to an export of it.
class DamagedDatabase : public ::testing::Test {
protected:
    testing::TemporaryFolder home, victim, temporary;
    std::string main, log;
    MessageList sound;

    DamagedDatabase()
    {
        MessagesFixture fixture(home / "chat.db");
        fixture.assistantChat();
        addMessages(fixture);
        fixture.checkpoint();
        addMessages(fixture);
        main = readFile(home / "chat.db");
        log = readFile(home / "chat.db-wal");
        sound = exportOf(main, log).messages;
    }

    static void addMessages(MessagesFixture& fixture)
    {
        fixture.database().execute("BEGIN");
        for (int i = 0; i < messageCount / 2; ++i)
            fixture.message({.text = "A message of some length, number " + std::to_string(i)});
        fixture.database().execute("COMMIT");
    }

    NimbrelExportResult exportOf(const std::string& mainFile, const std::string& logFile)
    {
        writeFile(victim / "chat.db", mainFile);
        writeFile(victim / "chat.db-wal", logFile);
        testing::RefusingFileManager files(temporary.path());
        const NimbrelExporter exporter(victim / "chat.db", NimbrelExporter::usualAttempts, files);
        try {
            auto result = exporter.export_({MessagesFixture::assistant});
            EXPECT_EQ(readFile(victim / "chat.db"), mainFile);
            return result;
        } catch (...) {
            EXPECT_LE(files.created, 3);
            EXPECT_EQ(readFile(victim / "chat.db"), mainFile);
            EXPECT_THAT(temporary.names(), IsEmpty());
            throw;
        }
    }

    /// Exports the database. Returns nothing if that fails with one of the errors for a damaged database.
    std::optional<NimbrelExportResult> tryExport(const std::string& mainFile, const std::string& logFile)
    {
        try {
            return exportOf(mainFile, logFile);
        } catch (const NimbrelExportError& error) {
            EXPECT_TRUE(error.is<NimbrelExportError::Database>() || error.is<NimbrelExportError::SnapshotUnreadable>())
                << error.what();
            return std::nullopt;
        }
    }
};

TEST_F(DamagedDatabase, IsReadWholeWhileItIsSound)
{
    EXPECT_EQ(sound.size(), static_cast<std::size_t>(messageCount));
}

TEST_F(DamagedDatabase, WhoseLogIsCutShortGivesTheRowsUpToACommit)
{
    for (std::size_t kept = 0; kept < log.size(); kept += 3001) {
        const auto result = tryExport(main, log.substr(0, kept));
        ASSERT_TRUE(result) << kept;
        EXPECT_EQ(result->messages.size(), static_cast<std::size_t>(messageCount / 2)) << kept;
    }
}

TEST_F(DamagedDatabase, WhoseMainFileIsCutShortFailsClearlyOrReadsTheRest)
{
    for (std::size_t kept = 0; kept < main.size(); kept += 1777) {
        const auto result = tryExport(main.substr(0, kept), "");
        if (result) EXPECT_LE(result->messages.size(), static_cast<std::size_t>(messageCount / 2)) << kept;
    }
}

TEST_F(DamagedDatabase, WithFlippedBitsInTheLogNeverGivesUncommittedRows)
{
    std::mt19937 random(7);
    for (int round = 0; round < 150; ++round) {
        std::string flipped = log;
        flipped[random() % flipped.size()] ^= static_cast<char>(1U << random() % 8);
        const auto result = tryExport(main, flipped); // SQLite reads the log up to the first wrong checksum
        ASSERT_TRUE(result) << round;
        EXPECT_THAT(result->messages.size(), ::testing::AnyOf(messageCount / 2, messageCount)) << round;
    }
}

TEST_F(DamagedDatabase, WithFlippedBitsInTheMainFileFailsClearlyOrReads)
{
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        std::string flipped = main;
        for (int i = 0; i < 8; ++i) flipped[random() % flipped.size()] ^= static_cast<char>(1U << random() % 8);
        tryExport(flipped, round % 2 == 0 ? log : "");
    }
}

} // namespace
} // namespace vorn
