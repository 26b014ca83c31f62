#pragma once

#include "Platform/Base/Owned.h"
#include "Platform/SQLite/SQLiteError.h"
#include "Platform/SQLite/SQLiteStatement.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vorn {

/// One connection to a SQLite file, closed when the object is destroyed.
/// Threads: opened without SQLite's mutexes; use it, and the rows it hands out, on one thread.
/// Errors: every failure is thrown as `SQLiteError`, which records the stage that failed; in a query-only connection
/// also SQLITE_TOOBIG for a value or row of more than 64 MiB.
class SQLiteDatabase {
public:
    enum class Mode {
        create,    ///< read-write; creates a missing file
        queryOnly, ///< never creates the file, refuses every change, and distrusts the file's content
    };
    using OnRow = SQLiteStatement::OnRow;

    /// Opens `path`. Here and in later calls, waits up to 2 seconds for another process's lock.
    SQLiteDatabase(const std::string& path, Mode mode);

    /// Runs one or more statements that return no rows.
    void execute(const std::string& sql) const;

    SQLiteStatement prepare(const std::string& sql) const;

    /// Runs one statement, discarding rows.
    void run(const std::string& sql, const std::vector<SQLiteValue>& bindings) const;

    /// Calls `onRow` for each row, in SQLite's order. What `onRow` throws reaches the caller after the statement is
    /// released.
    void query(const std::string& sql, const std::vector<SQLiteValue>& bindings, const OnRow& onRow) const;

    /// The lower-cased names of the table's columns; empty when there is no such table. `table` goes into the statement
    /// without quoting: pass fixed names only.
    std::set<std::string> columns(const std::string& table) const;

    /// From now on, asks `shouldStop` every 10,000 virtual machine instructions; true ends the running statement with
    /// SQLITE_INTERRUPT. Asking between rows would be too late: SQLite may sort a million rows before the first.
    void stopWhen(std::function<bool()> shouldStop);

    /// From now on, closing the connection leaves the write-ahead log beside the file instead of checkpointing it.
    void keepLogOnClose() const;

private:
    static void close(sqlite3* handle) noexcept;

    Owned<sqlite3, close> handle_;
    std::unique_ptr<std::function<bool()>> shouldStop_;
};

} // namespace vorn
