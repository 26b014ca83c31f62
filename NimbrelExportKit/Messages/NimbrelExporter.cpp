#include "NimbrelExportKit/Messages/NimbrelExporter.h"

#include "NimbrelExportKit/Messages/MessageReader.h"
#include "NimbrelExportKit/Messages/MessagesSnapshot.h"
#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "Platform/Base/Memory.h"
#include "Platform/SQLite/SQLiteDatabase.h"

#include <algorithm>
#include <exception>

namespace vorn {
namespace {

/// Reports progress, and ends the export when it is cancelled or the callback throws.
class Watch {
public:
    Watch(const NimbrelExporter::OnProgress& onProgress, const CancelFlag& cancel)
        : onProgress_(onProgress), cancel_(cancel)
    {
    }

    const CancelFlag& cancelFlag() const { return cancel_; }

    void copied(std::uint64_t bytes) const { report(ExportProgress::Phase::copying, bytes); }

    void read(std::int64_t rows)
    {
        rows_ = static_cast<std::uint64_t>(rows);
        report(ExportProgress::Phase::reading, rows_);
    }

    /// Called by SQLite, even while it sorts and returns no rows; no exception may pass through SQLite.
    bool endsReading() noexcept
    {
        try {
            report(ExportProgress::Phase::reading, rows_);
            return false;
        } catch (...) {
            thrown_ = std::current_exception();
            return true;
        }
    }

    /// Rethrows what ended the reading; returns if SQLite itself failed.
    void rethrow() const
    {
        if (thrown_) std::rethrow_exception(thrown_);
    }

private:
    void report(ExportProgress::Phase phase, std::uint64_t done) const
    {
        cancel_.check();
        if (onProgress_) onProgress_({phase, done});
    }

    const NimbrelExporter::OnProgress& onProgress_;
    const CancelFlag& cancel_;
    std::uint64_t rows_ = 0;
    std::exception_ptr thrown_;
};

SQLiteDatabase openSnapshot(const MessagesSnapshot& snapshot, Watch& watch)
{
    SQLiteDatabase database(snapshot.databaseURL().string(), SQLiteDatabase::Mode::queryOnly);
    // Otherwise sorting would spill private text into files outside the private folder.
    database.execute("PRAGMA temp_store = MEMORY");
    database.stopWhen([&watch] { return watch.endsReading(); });
    return database;
}

NimbrelExportResult read(const MessagesSnapshot& snapshot, const std::vector<std::string>& handles, Watch& watch)
{
    const SQLiteDatabase database = openSnapshot(snapshot, watch);
    auto chats = NimbrelChatLocator::locate(database, handles);
    auto output =
        MessageReader::read(chats, database, [&watch](std::int64_t rows) { watch.read(rows); }, watch.cancelFlag());
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
    Watch watch(onProgress, cancel);
    for (int attempt = 0; attempt < attempts_; ++attempt) {
        auto snapshot =
            MessagesSnapshot::take(databaseURL_, fileManager_, [&watch](std::uint64_t bytes) { watch.copied(bytes); });
        try {
            NimbrelExportResult result = read(snapshot, handles, watch);
            snapshot.remove();
            memory::returnFreed(); // sorting a large history took as much memory as its records
            return result;
        } catch (const SQLiteError& error) {
            watch.rethrow(); // an interrupted statement reports an error of its own
            if (!error.isCorruption()) throw NimbrelExportError(NimbrelExportError::Database{error});
        }
    }
    throw NimbrelExportError(NimbrelExportError::SnapshotUnreadable{});
}

} // namespace vorn
