#include "Platform/SQLite/SQLiteDatabase.h"

#include "Platform/Base/Text.h"

#include <array>
#include <utility>

#include <sqlite3.h>

namespace vorn {
namespace {

constexpr int busyTimeoutMilliseconds = 2000;

/// Virtual machine instructions between calls of `shouldStop`: about a millisecond.
constexpr int instructionsBetweenChecks = 10'000;

int openFlags(SQLiteDatabase::Mode mode)
{
    // Query-only connections open the file for writing too: SQLite must index the copied log. The pragma forbids
    // changes.
    constexpr int both = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    return mode == SQLiteDatabase::Mode::create ? both | SQLITE_OPEN_CREATE : both;
}

/// Limits for a query-only connection, each far above what Messages needs.
constexpr std::array<std::pair<int, int>, 4> limits{{
    {SQLITE_LIMIT_LENGTH, 64 * 1024 * 1024}, // bytes in a value or a row
    {SQLITE_LIMIT_SQL_LENGTH, 1024 * 1024},  // the file's own statements too: they make its schema
    {SQLITE_LIMIT_EXPR_DEPTH, 200},
    {SQLITE_LIMIT_ATTACHED, 0},
}};

/// Distrusts the file's schema, which can call functions and change what statements mean.
void distrustFile(sqlite3* handle)
{
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    for (const auto& [limit, value] : limits) sqlite3_limit(handle, limit, value);
}

/// Turns off memory statistics, whose lock costs a large export a tenth of its time. Once the process has used SQLite,
/// this does nothing, and does no harm.
void stopCountingMemory()
{
    [[maybe_unused]] static const int result = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

int askWhetherToStop(void* question)
{
    return (*static_cast<std::function<bool()>*>(question))() ? 1 : 0;
}

} // namespace

void SQLiteDatabase::close(sqlite3* handle) noexcept
{
    sqlite3_close_v2(handle);
}

SQLiteDatabase::SQLiteDatabase(const std::string& path, Mode mode)
{
    stopCountingMemory();
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &handle, openFlags(mode), nullptr);
    handle_.reset(handle);
    if (result != SQLITE_OK || handle == nullptr) {
        throw SQLiteError(SQLiteError::Stage::open, result, handle != nullptr ? sqlite3_errmsg(handle) : "cannot open");
    }
    sqlite3_busy_timeout(handle, busyTimeoutMilliseconds);
    if (mode == Mode::create) return;
    distrustFile(handle);
    execute("PRAGMA query_only = ON");
    keepLogOnClose(); // checkpointing would be wasted work: the file is not read again
}

void SQLiteDatabase::execute(const std::string& sql) const
{
    char* text = nullptr;
    const int result = sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, &text);
    const Owned<char, sqlite3_free> owned(text);
    if (result != SQLITE_OK)
        throw SQLiteError(SQLiteError::Stage::execute, result, text != nullptr ? text : "exec failed");
}

SQLiteStatement SQLiteDatabase::prepare(const std::string& sql) const
{
    return {handle_.get(), sql};
}

void SQLiteDatabase::run(const std::string& sql, const std::vector<SQLiteValue>& bindings) const
{
    prepare(sql).run(bindings);
}

void SQLiteDatabase::query(const std::string& sql, const std::vector<SQLiteValue>& bindings, const OnRow& onRow) const
{
    prepare(sql).query(bindings, onRow);
}

std::set<std::string> SQLiteDatabase::columns(const std::string& table) const
{
    constexpr int name = 1;
    std::set<std::string> names;
    query("PRAGMA table_info(" + table + ")", {}, [&names](const SQLiteRow& row) {
        if (const auto column = row.text(name)) names.insert(text::lowercased(*column));
    });
    return names;
}

void SQLiteDatabase::stopWhen(std::function<bool()> shouldStop)
{
    shouldStop_ = std::make_unique<std::function<bool()>>(std::move(shouldStop));
    sqlite3_progress_handler(handle_.get(), instructionsBetweenChecks, &askWhetherToStop, shouldStop_.get());
}

void SQLiteDatabase::keepLogOnClose() const
{
    sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

} // namespace vorn
