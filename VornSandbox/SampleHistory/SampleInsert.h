#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/SQLite/SQLiteDatabase.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vorn {

/// Adds rows to a table with one statement, prepared for the first row and run again for each later one. Threads and
/// errors are those of `SQLiteDatabase`, which it must not outlive.
class SampleInsert {
public:
    using Value = std::variant<std::nullptr_t, std::int64_t, std::string_view, ByteView>;
    using Row = std::initializer_list<std::pair<std::string_view, Value>>; ///< columns and their values

    SampleInsert(const SQLiteDatabase& database, std::string_view table) : database_(database), table_(table) {}

    /// Columns that are not named keep their default. Every row must name the same columns in the same order.
    void run(Row row);

private:
    const SQLiteDatabase& database_;
    std::string_view table_;
    std::optional<SQLiteStatement> statement_;
    std::vector<SQLiteValue> values_;
};

} // namespace vorn
