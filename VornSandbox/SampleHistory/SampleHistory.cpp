#include "VornSandbox/SampleHistory/SampleHistory.h"

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/UUID.h"
#include "Platform/SQLite/SQLiteDatabase.h"
#include "VornSandbox/SampleHistory/SampleCast.h"
#include "VornSandbox/SampleHistory/SampleData.h"
#include "VornSandbox/SampleHistory/SamplePlan.h"
#include "VornSandbox/SampleHistory/SampleWriter.h"

#include <cerrno>
#include <system_error>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// For filling a new file fast: nothing protects it against a crash. Exclusive locking keeps the log's index in memory,
/// so that no "-shm" file appears beside the database.
constexpr auto fastPragmas = "PRAGMA page_size = 4096; PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF;"
                             "PRAGMA synchronous = OFF; PRAGMA cache_size = -262144; PRAGMA temp_store = MEMORY;"
                             "PRAGMA threads = 2";

fs::path beside(fs::path path, const char* suffix)
{
    return path += suffix;
}

/// A private folder beside the output, removed with everything in it when the object is destroyed.
class Workshop {
public:
    explicit Workshop(const fs::path& output)
        : folder_(fs::absolute(output).parent_path() / (".sample-history-" + newUUID()))
    {
        FileManager::standard().createPrivateDirectory(folder_);
    }
    ~Workshop()
    {
        std::error_code ignored; // nothing sensible can be done about a folder that cannot be removed
        fs::remove_all(folder_, ignored);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    fs::path database() const { return folder_ / "chat.db"; }

    /// Created before SQLite opens it: SQLite would let others read it, and gives its log the database's mode.
    void makeEmptyFile() const
    {
        const FileDescriptor file = createPrivateFile(database());
        if (!file)
            throw fs::filesystem_error("cannot write", database(), std::error_code(errno, std::generic_category()));
    }

private:
    fs::path folder_;
};

void check(const fs::path& output, const SampleHistoryOptions& options)
{
    if (!output.has_filename()) throw std::invalid_argument("the output needs the name of a file, such as chat.db");
    if (options.messages < 0 || options.messages > SampleHistoryOptions::mostMessages) {
        throw std::invalid_argument("the number of messages is negative or too large");
    }
    if (options.inLog < 0 || options.inLog > options.messages) {
        throw std::invalid_argument("the log cannot hold more messages than there are");
    }
    const fs::path folder = fs::absolute(output).parent_path();
    if (!fs::is_directory(folder)) {
        throw fs::filesystem_error("there is no folder", folder, std::make_error_code(std::errc::not_a_directory));
    }
    if (fs::is_directory(output)) {
        throw fs::filesystem_error("will not replace", output, std::make_error_code(std::errc::is_a_directory));
    }
    if (!options.replaceExisting && (fs::exists(output) || fs::exists(beside(output, "-wal")))) {
        throw fs::filesystem_error("will not replace", output, std::make_error_code(std::errc::file_exists));
    }
}

class HistoryWriting {
public:
    HistoryWriting(const fs::path& path, const SampleHistoryOptions& options)
        : options_(options), cast_(SampleCast::make(options)), plan_(options, cast_),
          database_(path.string(), SQLiteDatabase::Mode::create)
    {
        if (options.cancel != nullptr) {
            database_.stopWhen([cancel = options.cancel] { return cancel->isCancelled(); });
        }
    }

    SampleHistorySummary run()
    {
        database_.execute(fastPragmas);
        database_.execute(sampleData::tables);
        SampleWriter writer(database_, cast_);
        inTransaction([&] {
            writer.writeCast();
            writeRows(writer, options_.messages - options_.inLog);
        });
        // An index over existing rows is sorted once; maintained row by row, it would cost more than the rows.
        database_.execute("BEGIN");
        database_.execute(sampleData::indexes);
        database_.execute(sampleData::triggers);
        database_.execute("COMMIT");
        database_.execute("PRAGMA analysis_limit = 400; ANALYZE");
        database_.execute("PRAGMA journal_mode = WAL");
        if (options_.inLog > 0) {
            database_.execute("PRAGMA wal_autocheckpoint = 0");
            database_.keepLogOnClose();
            inTransaction([&] { writeRows(writer, options_.inLog); });
        }
        return plan_.summary();
    }

private:
    void writeRows(SampleWriter& writer, std::int64_t rows)
    {
        constexpr std::int64_t rowsBetweenReports = 4'096;
        for (std::int64_t i = 0; i < rows; ++i) {
            const SampleMessage& message = plan_.next();
            writer.write(message);
            if (message.rowID % rowsBetweenReports != 0) continue;
            if (options_.cancel != nullptr) options_.cancel->check();
            if (options_.progress) options_.progress(message.rowID, options_.messages);
        }
    }

    template <class Body>
    void inTransaction(const Body& body)
    {
        database_.execute("BEGIN");
        body();
        database_.execute("COMMIT");
    }

    const SampleHistoryOptions& options_;
    SampleCast cast_;
    SamplePlan plan_;
    SQLiteDatabase database_;
};

/// Removes the old database before its log, and moves the new log before its database: a database and a log of
/// different histories are never side by side.
void moveInto(const fs::path& output, const fs::path& from)
{
    fs::remove(output);
    fs::remove(beside(output, "-shm"));
    fs::remove(beside(output, "-wal"));
    if (fs::exists(beside(from, "-wal"))) fs::rename(beside(from, "-wal"), beside(output, "-wal"));
    fs::rename(from, output);
}

} // namespace

SampleHistorySummary writeSampleHistory(const fs::path& path, const SampleHistoryOptions& options)
{
    check(path, options);
    const Workshop workshop(path);
    workshop.makeEmptyFile();
    try {
        auto summary = HistoryWriting(workshop.database(), options).run();
        if (options.cancel != nullptr) options.cancel->check();
        moveInto(path, workshop.database());
        return summary;
    } catch (const SQLiteError&) {
        if (options.cancel != nullptr) options.cancel->check(); // cancelling interrupts statements
        throw;
    }
}

} // namespace vorn
