#include "VornSandbox/SampleHistory/SampleDatabase.h"

#include "VornSandbox/SampleHistory/SampleHistory.h"

#include <sqlite3.h>

namespace vorn {

SampleDatabase::SampleDatabase(const std::filesystem::path& path, const CancelFlag* cancel) : cancel_(cancel)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    if (code != SQLITE_OK) fail();
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
    if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

void SampleDatabase::defineFunctions(std::initializer_list<const char*> names)
{
    const auto nothing = [](sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_null(context); };
    for (const char* name : names) {
        if (sqlite3_create_function(handle(), name, -1, SQLITE_UTF8, nullptr, nothing, nullptr, nullptr) != SQLITE_OK)
            fail();
    }
}

void SampleDatabase::beginLog()
{
    execute("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0");
    if (sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr) != SQLITE_OK) fail();
}

void SampleDatabase::checkCancelled() const
{
    if (cancel_ != nullptr) cancel_->check();
}

void SampleDatabase::fail() const
{
    checkCancelled(); // an interrupted statement fails, but that is not what went wrong
    throw SampleHistoryError(handle_ ? sqlite3_errmsg(handle()) : "out of memory");
}

void SampleDatabase::Close::operator()(sqlite3* handle) const noexcept
{
    sqlite3_close_v2(handle);
}

SampleStatement::SampleStatement(SampleDatabase& database, std::string_view sql) : database_(database)
{
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v3(database.handle(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement_.reset(prepared);
    if (code != SQLITE_OK) database_.fail();
}

void SampleStatement::bind(int index, std::int64_t value)
{
    if (sqlite3_bind_int64(statement_.get(), index, value) != SQLITE_OK) database_.fail();
}

void SampleStatement::bind(int index, std::string_view text)
{
    // A null pointer would bind NULL instead of an empty text.
    const char* start = text.empty() ? "" : text.data();
    if (sqlite3_bind_text64(statement_.get(), index, start, text.size(), SQLITE_STATIC, SQLITE_UTF8) != SQLITE_OK)
        database_.fail();
}

void SampleStatement::bind(int index, ByteView blob)
{
    const void* start = blob.empty() ? static_cast<const void*>("") : blob.data();
    if (sqlite3_bind_blob64(statement_.get(), index, start, blob.size(), SQLITE_STATIC) != SQLITE_OK) database_.fail();
}

void SampleStatement::bind(int index, std::nullptr_t)
{
    if (sqlite3_bind_null(statement_.get(), index) != SQLITE_OK) database_.fail();
}

void SampleStatement::step()
{
    if (sqlite3_step(statement_.get()) != SQLITE_DONE) database_.fail();
    sqlite3_reset(statement_.get());
}

void SampleStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept
{
    sqlite3_finalize(statement);
}

} // namespace vorn
