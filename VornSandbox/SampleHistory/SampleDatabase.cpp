#include "VornSandbox/SampleHistory/SampleDatabase.h"

#include "Platform/Base/Match.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"

#include <string>

#include <sqlite3.h>

namespace vorn {

SampleDatabase::SampleDatabase(const std::filesystem::path& path, const CancelFlag* cancel) : cancel_(cancel)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    check(code);
    const auto isCancelled = [](void* flag) { return static_cast<const CancelFlag*>(flag)->isCancelled() ? 1 : 0; };
    constexpr int steps = 20'000; // of SQLite's machine: a few hundred microseconds
    if (cancel_ != nullptr) sqlite3_progress_handler(opened, steps, isCancelled, const_cast<CancelFlag*>(cancel_));
    // Exclusive locking keeps the index of the log in memory: no "-shm" file appears beside the database.
    execute(
        "PRAGMA page_size = 4096; PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;"
        "PRAGMA cache_size = -262144; PRAGMA temp_store = MEMORY; PRAGMA threads = 2");
}

void SampleDatabase::execute(const char* sql)
{
    checkCancelled();
    check(sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr));
}

void SampleDatabase::beginLog()
{
    execute("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0");
    check(sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr));
}

void SampleDatabase::checkCancelled() const
{
    if (cancel_ != nullptr) cancel_->check();
}

void SampleDatabase::check(int code, int expected) const
{
    if (code == expected) return;
    checkCancelled(); // an interrupted statement fails, but that is not what went wrong
    throw SampleHistoryError(handle_ ? sqlite3_errmsg(handle()) : "out of memory");
}

void SampleDatabase::close(sqlite3* handle) noexcept
{
    sqlite3_close_v2(handle);
}

void SampleInsert::prepare(Row row)
{
    std::string columns;
    std::string places;
    for (const auto& [column, value] : row) {
        columns.append(columns.empty() ? "" : ", ").append(column);
        places.append(places.empty() ? "?" : ", ?");
    }
    const std::string sql = "INSERT INTO " + std::string(table_) + " (" + columns + ") VALUES (" + places + ")";
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v3(database_.handle(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement_.reset(prepared);
    database_.check(code);
}

void SampleInsert::run(Row row)
{
    if (!statement_) prepare(row);
    sqlite3_stmt* const statement = statement_.get();
    int index = 0;
    // A null pointer would bind NULL instead of an empty text or blob.
    const Match bind{[&](std::nullptr_t) { return sqlite3_bind_null(statement, index); },
                     [&](std::int64_t number) { return sqlite3_bind_int64(statement, index, number); },
                     [&](std::string_view text) {
                         return sqlite3_bind_text64(statement, index, text.empty() ? "" : text.data(), text.size(),
                                                    SQLITE_STATIC, SQLITE_UTF8);
                     },
                     [&](ByteView blob) {
                         const void* const start = blob.empty() ? static_cast<const void*>("") : blob.data();
                         return sqlite3_bind_blob64(statement, index, start, blob.size(), SQLITE_STATIC);
                     }};
    for (const auto& [column, value] : row) {
        ++index;
        database_.check(std::visit(bind, value));
    }
    database_.check(sqlite3_step(statement), SQLITE_DONE);
    sqlite3_reset(statement);
}

void SampleInsert::finalize(sqlite3_stmt* statement) noexcept
{
    sqlite3_finalize(statement);
}

} // namespace vorn
