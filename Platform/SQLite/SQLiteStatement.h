#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/Owned.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct sqlite3; // the C API stays out of our headers
struct sqlite3_stmt;

namespace vorn {

/// A value bound to a parameter: an integer, a text, a blob or NULL.
using SQLiteValue = std::variant<std::int64_t, std::string, ByteBuffer, std::nullptr_t>;

/// The current row of a statement. Valid only inside the callback of `SQLiteStatement::query`: copy out what you need.
/// Columns count from 0; NULL reads as nothing.
class SQLiteRow {
public:
    explicit SQLiteRow(sqlite3_stmt* statement) noexcept : statement_(statement) {}

    bool isNull(int column) const;
    std::optional<std::int64_t> int64(int column) const;
    std::int64_t int64OrZero(int column) const; ///< 0 for NULL too

    /// The text up to its first NUL, with one U+FFFD for each maximal ill-formed part.
    std::optional<std::string> text(int column) const;

    /// An empty blob is an empty buffer, not nothing.
    std::optional<ByteBuffer> blob(int column) const;

    /// As `text` and `blob`, without copying or repairing. Invalid once the row is left or the column is read as
    /// another type.
    std::optional<std::string_view> rawText(int column) const;
    std::optional<ByteView> blobView(int column) const;

private:
    sqlite3_stmt* statement_;
};

/// One SQL statement, prepared once and run any number of times. It must not outlive its `SQLiteDatabase`, whose notes
/// on threads and errors apply here too.
class SQLiteStatement {
public:
    using OnRow = std::function<void(const SQLiteRow&)>;

    /// Call `SQLiteDatabase::prepare` instead.
    SQLiteStatement(sqlite3* database, const std::string& sql);

    /// Runs the statement, discarding rows.
    void run(const std::vector<SQLiteValue>& bindings);

    /// Calls `onRow` for each row, in SQLite's order. What `onRow` throws reaches the caller.
    void query(const std::vector<SQLiteValue>& bindings, const OnRow& onRow);

private:
    bool step();
    void bind(const std::vector<SQLiteValue>& bindings);
    static void finalize(sqlite3_stmt* statement) noexcept;

    Owned<sqlite3_stmt, finalize> statement_;
};

} // namespace vorn
