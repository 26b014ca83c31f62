#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Owned.h"

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <variant>

struct sqlite3; // the C API stays out of our headers
struct sqlite3_stmt;

namespace vorn {

/// A connection made for filling one new file fast. Until `beginLog` nothing protects the file against a crash.
/// Threads: one at a time. Errors: `SampleHistoryError`, and `Cancelled` once the flag is raised.
class SampleDatabase {
public:
    /// Opens the existing, empty file.
    SampleDatabase(const std::filesystem::path& path, const CancelFlag* cancel);

    /// Runs one or more statements.
    void execute(const char* sql);

    /// From now on changes go to the write-ahead log, and stay there when the connection is closed.
    void beginLog();

    /// Throws `Cancelled` once the flag is raised. During long statements SQLite asks by itself.
    void checkCancelled() const;

    sqlite3* handle() const noexcept { return handle_.get(); }

    /// Throws SQLite's failure if `code` is not the expected one.
    void check(int code, int expected = 0) const;

private:
    static void close(sqlite3* handle) noexcept;

    const CancelFlag* cancel_;
    Owned<sqlite3, close> handle_;
};

/// Adds rows to a table: one statement, prepared for the first row and run again for each.
class SampleInsert {
public:
    using Value = std::variant<std::nullptr_t, std::int64_t, std::string_view, ByteView>;
    using Row = std::initializer_list<std::pair<std::string_view, Value>>; ///< columns and what they hold

    SampleInsert(SampleDatabase& database, std::string_view table) : database_(database), table_(table) {}

    /// Columns that are not named keep their default. Every row names the same ones in the same order.
    void run(Row row);

private:
    void prepare(Row row);
    static void finalize(sqlite3_stmt* statement) noexcept;

    SampleDatabase& database_;
    std::string_view table_;
    Owned<sqlite3_stmt, finalize> statement_;
};

} // namespace vorn
