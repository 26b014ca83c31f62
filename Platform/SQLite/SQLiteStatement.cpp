#include "Platform/SQLite/SQLiteStatement.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/Text.h"
#include "Platform/SQLite/SQLiteError.h"

#include <limits>
#include <type_traits>

#include <sqlite3.h>

namespace vorn {
namespace {

int bindValue(sqlite3_stmt* statement, int index, const SQLiteValue& value)
{
    return std::visit(
        [&](const auto& content) {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, std::int64_t>) {
                return sqlite3_bind_int64(statement, index, content);
            } else if constexpr (std::is_same_v<Content, std::string>) {
                return sqlite3_bind_text(statement, index, content.c_str(), -1, SQLITE_TRANSIENT);
            } else if constexpr (std::is_same_v<Content, ByteBuffer>) {
                if (content.size() > std::numeric_limits<int>::max()) fatalError("a blob of more than 2 GiB was bound");
                // A null pointer would bind NULL; an empty blob is a value.
                return sqlite3_bind_blob(statement, index,
                                         content.empty() ? "" : static_cast<const void*>(content.data()),
                                         static_cast<int>(content.size()), SQLITE_TRANSIENT);
            } else {
                return sqlite3_bind_null(statement, index);
            }
        },
        value);
}

[[noreturn]] void fail(SQLiteError::Stage stage, int code, sqlite3* database)
{
    throw SQLiteError(stage, code, sqlite3_errmsg(database));
}

} // namespace

bool SQLiteRow::isNull(int column) const
{
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

std::optional<std::int64_t> SQLiteRow::int64(int column) const
{
    const std::int64_t value = int64OrZero(column);
    if (value == 0 && isNull(column)) return std::nullopt;
    return value;
}

std::int64_t SQLiteRow::int64OrZero(int column) const
{
    return sqlite3_column_int64(statement_, column); // which reads NULL as 0
}

std::optional<std::string> SQLiteRow::text(int column) const
{
    const auto raw = rawText(column);
    if (!raw) return std::nullopt;
    std::string room;
    return std::string(text::repaired(*raw, room));
}

std::optional<ByteBuffer> SQLiteRow::blob(int column) const
{
    const auto view = blobView(column);
    if (!view) return std::nullopt;
    return ByteBuffer(view->begin(), view->end());
}

std::optional<std::string_view> SQLiteRow::rawText(int column) const
{
    const unsigned char* characters = sqlite3_column_text(statement_, column);
    if (characters == nullptr) return std::nullopt;                     // NULL, or out of memory
    return std::string_view(reinterpret_cast<const char*>(characters)); // ends at the first NUL
}

std::optional<ByteView> SQLiteRow::blobView(int column) const
{
    const void* content = sqlite3_column_blob(statement_, column);
    if (content == nullptr && isNull(column)) return std::nullopt; // an empty blob has no content either
    const int size = sqlite3_column_bytes(statement_, column);     // after the content, which reading may convert
    if (content == nullptr || size < 1) return ByteView();
    return ByteView(static_cast<const std::byte*>(content), static_cast<std::size_t>(size));
}

SQLiteStatement::SQLiteStatement(sqlite3* database, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    statement_.reset(statement);
    if (result != SQLITE_OK || statement == nullptr) fail(SQLiteError::Stage::prepare, result, database);
}

void SQLiteStatement::run(const std::vector<SQLiteValue>& bindings)
{
    query(bindings, [](const SQLiteRow&) {});
}

void SQLiteStatement::query(const std::vector<SQLiteValue>& bindings, const OnRow& onRow)
{
    sqlite3_reset(statement_.get()); // the previous run may have ended early
    bind(bindings);
    while (step()) onRow(SQLiteRow(statement_.get()));
    sqlite3_reset(statement_.get()); // ends the statement's transaction
}

bool SQLiteStatement::step()
{
    const int result = sqlite3_step(statement_.get());
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    fail(SQLiteError::Stage::step, result, sqlite3_db_handle(statement_.get()));
}

void SQLiteStatement::bind(const std::vector<SQLiteValue>& bindings)
{
    if (bindings.size() > std::numeric_limits<int>::max()) fatalError("too many parameters were bound");
    int index = 0;
    for (const SQLiteValue& value : bindings) {
        const int result = bindValue(statement_.get(), ++index, value);
        if (result != SQLITE_OK) fail(SQLiteError::Stage::bind, result, sqlite3_db_handle(statement_.get()));
    }
}

void SQLiteStatement::finalize(sqlite3_stmt* statement) noexcept
{
    sqlite3_finalize(statement);
}

} // namespace vorn
