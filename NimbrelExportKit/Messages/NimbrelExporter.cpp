#include "NimbrelExportKit/Messages/NimbrelExporter.h"

#include "NimbrelExportKit/Messages/MessageReader.h"
#include "NimbrelExportKit/Messages/MessagesSnapshot.h"
#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "NimbrelExportKit/Records/NimbrelExportError.h"
#include "NimbrelExportKit/SQLite/SQLiteDatabase.h"
#include "Platform/Base/Memory.h"

#include <algorithm>

namespace vorn {
namespace {

/// Tells how far an export has come, and ends it when it was cancelled.
struct Watch {
    const NimbrelExporter::OnProgress& onProgress;
    const CancelFlag& cancel;

    void report(ExportProgress::Phase phase, std::uint64_t done) const
    {
        cancel.check();
        if (onProgress) onProgress({phase, done});
    }
};

SQLiteDatabase openSnapshot(const MessagesSnapshot& snapshot, const CancelFlag& cancel)
{
    SQLiteDatabase database(snapshot.databaseURL().string(), SQLiteDatabase::Mode::queryOnly);
    // Sorting would otherwise spill private text into files outside the private folder.
    database.execute("PRAGMA temp_store = MEMORY");
    database.stopWhen([&cancel] { return cancel.isCancelled(); });
    return database;
}

NimbrelExportResult read(const MessagesSnapshot& snapshot, const std::vector<std::string>& handles, const Watch& watch)
{
    const SQLiteDatabase database = openSnapshot(snapshot, watch.cancel);
    auto chats = NimbrelChatLocator::locate(database, handles);
    auto output = MessageReader::read(chats, database, [&watch](std::int64_t rows) {
        watch.report(ExportProgress::Phase::reading, static_cast<std::uint64_t>(rows));
    });
    return {std::move(chats), std::move(output.messages), std::move(output.skipped)};
}

} // namespace

NimbrelExporter::NimbrelExporter(std::filesystem::path databaseURL, int attempts, FileManager& fileManager)
    : databaseURL_(std::move(databaseURL)), attempts_(std::max(attempts, 1)), fileManager_(fileManager)
{
}

NimbrelExportResult NimbrelExporter::export_(const std::vector<std::string>& handles, const OnProgress& onProgress,
                                             const CancelFlag& cancel) const
{
    const Watch watch{onProgress, cancel};
    for (int attempt = 0; attempt < attempts_; ++attempt) {
        auto snapshot = MessagesSnapshot::take(databaseURL_, fileManager_, [&watch](std::uint64_t bytes) {
            watch.report(ExportProgress::Phase::copying, bytes);
        });
        try {
            NimbrelExportResult result = read(snapshot, handles, watch);
            snapshot.remove();
            memory::returnFreed(); // sorting a large history took as much as its records
            return result;
        } catch (const SQLiteError& error) {
            cancel.check(); // a cancelled statement ends with an error of its own
            if (!error.isCorruption()) throw NimbrelExportError(NimbrelExportError::Database{error});
        }
    }
    throw NimbrelExportError(NimbrelExportError::SnapshotUnreadable{});
}

const CancelFlag& NimbrelExporter::neverCancelled()
{
    static const CancelFlag flag;
    return flag;
}

} // namespace vorn
