#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/Owned.h"
#include "Platform/SQLite/SQLiteError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct sqlite3; // the C API stays out of our headers
struct sqlite3_stmt;

namespace vorn {

/// A value bound to a parameter: an integer, a text, a blob or NULL.
using SQLiteValue = std::variant<std::int64_t, std::string, ByteBuffer, std::nullptr_t>;

/// The current row of a statement. Valid only inside the callback of `SQLiteDatabase::query`: copy out what you need.
/// Columns count from 0; NULL reads as nothing.
class SQLiteRow {
public:
    explicit SQLiteRow(sqlite3_stmt* statement) noexcept : statement_(statement) {}

    bool isNull(int column) const;
    std::optional<std::int64_t> int64(int column) const;
    std::int64_t int64OrZero(int column) const; ///< for NULL too

    /// The text up to its first NUL, with one U+FFFD for each maximal ill-formed part.
    std::optional<std::string> text(int column) const;

    /// An empty blob is an empty buffer, not nothing.
    std::optional<ByteBuffer> blob(int column) const;

    /// As `text` and `blob`, without copy and repair. Invalid after the row, or after reading the column as another
    /// type.
    std::optional<std::string_view> rawText(int column) const;
    std::optional<ByteView> blobView(int column) const;

private:
    sqlite3_stmt* statement_;
};

/// One connection to a SQLite file, closed when the object dies.
/// Threads: opened without SQLite's mutexes; use it, and the rows it hands out, on one thread.
/// Errors: every failure is thrown as `SQLiteError`, which records the stage that failed; in a query-only connection
/// also SQLITE_TOOBIG for a value or row of more than 64 MiB.
class SQLiteDatabase {
public:
    enum class Mode {
        create,    ///< read-write; creates a missing file
        queryOnly, ///< never makes the file, refuses every change, and takes the file for one that a stranger may have
                   ///< made
    };
    using OnRow = std::function<void(const SQLiteRow&)>;

    /// Opens `path`. Here and in later calls, waits up to 2 seconds for another process's lock.
    SQLiteDatabase(const std::string& path, Mode mode);

    /// Runs one or more statements that return no rows.
    void execute(const std::string& sql) const;

    /// Runs one statement, discarding rows.
    void run(const std::string& sql, const std::vector<SQLiteValue>& bindings) const;

    /// Calls `onRow` for each row, in SQLite's order. What `onRow` throws reaches the caller after the statement is
    /// released.
    void query(const std::string& sql, const std::vector<SQLiteValue>& bindings, const OnRow& onRow) const;

    /// The lower-cased names of the table's columns; empty when there is no such table. `table` goes into the statement
    /// as it stands: pass fixed names only.
    std::set<std::string> columns(const std::string& table) const;

    /// From now on, asks `shouldStop` every few thousand virtual machine steps; true ends the running statement with
    /// SQLITE_INTERRUPT. Asking between rows would be too late: sorting a million rows is one step.
    void stopWhen(std::function<bool()> shouldStop);

private:
    class Statement;
    static void close(sqlite3* handle) noexcept;
    [[noreturn]] void fail(SQLiteError::Stage stage, int code) const;

    Owned<sqlite3, close> handle_;
    std::unique_ptr<std::function<bool()>> shouldStop_;
};

} // namespace vorn
