#include "Platform/SQLite/SQLiteDatabase.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/Text.h"

#include <array>
#include <limits>
#include <type_traits>

#include <sqlite3.h>

namespace vorn {
namespace {

constexpr int busyTimeoutMilliseconds = 2000;

/// Virtual machine instructions between calls of `shouldStop`: about a millisecond.
constexpr int stepsBetweenQuestions = 10'000;

int openFlags(SQLiteDatabase::Mode mode)
{
    // Query-only connections open the file for writing too: SQLite must index the copied log. The pragma forbids
    // changes.
    constexpr int both = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    return mode == SQLiteDatabase::Mode::create ? both | SQLITE_OPEN_CREATE : both;
}

/// Limits for a query-only connection, each far above what Messages needs.
constexpr std::array<std::pair<int, int>, 4> limits{{
    {SQLITE_LIMIT_LENGTH, 64 * 1024 * 1024}, // bytes of a value or a row
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

/// Turns off memory statistics, whose lock costs a large export a tenth of its time. Has no effect, without harm, once
/// the process has used SQLite.
void stopCountingMemory()
{
    [[maybe_unused]] static const int result = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

int askWhetherToStop(void* question)
{
    return (*static_cast<std::function<bool()>*>(question))() ? 1 : 0;
}

} // namespace

/// A prepared statement with its values bound, finalised when the object dies.
class SQLiteDatabase::Statement {
public:
    Statement(const SQLiteDatabase& database, const std::string& sql, const std::vector<SQLiteValue>& bindings)
        : database_(database)
    {
        sqlite3_stmt* statement = nullptr;
        const int result = sqlite3_prepare_v2(database.handle_.get(), sql.c_str(), -1, &statement, nullptr);
        statement_.reset(statement);
        if (result != SQLITE_OK || statement == nullptr) database.fail(SQLiteError::Stage::prepare, result);
        bind(bindings);
    }

    /// Moves to the next row; false after the last.
    bool step()
    {
        const int result = sqlite3_step(statement_.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) database_.fail(SQLiteError::Stage::step, result);
        return result == SQLITE_ROW;
    }

    SQLiteRow row() const { return SQLiteRow(statement_.get()); }

private:
    void bind(const std::vector<SQLiteValue>& bindings)
    {
        if (bindings.size() > std::numeric_limits<int>::max())
            fatalError("more parameters were bound than an int counts");
        int index = 0;
        for (const SQLiteValue& value : bindings) {
            const int result = bindValue(statement_.get(), ++index, value);
            if (result != SQLITE_OK) database_.fail(SQLiteError::Stage::bind, result);
        }
    }

    const SQLiteDatabase& database_;
    Owned<sqlite3_stmt, sqlite3_finalize> statement_;
};

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
    const int size = sqlite3_column_bytes(statement_, column);     // after the content: asking converts
    if (content == nullptr || size < 1) return ByteView();
    return ByteView(static_cast<const std::byte*>(content), static_cast<std::size_t>(size));
}

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
    // Skips moving the log into the file on closing: nothing reads it any more.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void SQLiteDatabase::execute(const std::string& sql) const
{
    char* text = nullptr;
    const int result = sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, &text);
    const Owned<char, sqlite3_free> owned(text);
    if (result != SQLITE_OK)
        throw SQLiteError(SQLiteError::Stage::execute, result, text != nullptr ? text : "exec failed");
}

void SQLiteDatabase::run(const std::string& sql, const std::vector<SQLiteValue>& bindings) const
{
    Statement statement(*this, sql, bindings);
    while (statement.step()) {
    }
}

void SQLiteDatabase::query(const std::string& sql, const std::vector<SQLiteValue>& bindings, const OnRow& onRow) const
{
    Statement statement(*this, sql, bindings);
    while (statement.step()) onRow(statement.row());
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
    sqlite3_progress_handler(handle_.get(), stepsBetweenQuestions, &askWhetherToStop, shouldStop_.get());
}

void SQLiteDatabase::fail(SQLiteError::Stage stage, int code) const
{
    throw SQLiteError(stage, code, handle_ ? sqlite3_errmsg(handle_.get()) : "no connection");
}

} // namespace vorn
