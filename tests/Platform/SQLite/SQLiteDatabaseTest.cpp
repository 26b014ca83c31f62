#include "Platform/SQLite/SQLiteDatabase.h"
#include "tests/support/TemporaryFolder.h"

#include <future>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;
using Mode = SQLiteDatabase::Mode;
using Stage = SQLiteError::Stage;

/// The error that `action` throws; fails the test if it throws none.
template <class Action>
SQLiteError errorOf(Action&& action)
{
    try {
        action();
    } catch (const SQLiteError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {Stage::open, 0, ""};
}

class SQLiteDatabaseTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = (folder / "test.db").string();

    SQLiteDatabase filled() const
    {
        SQLiteDatabase database(path, Mode::create);
        database.execute("CREATE TABLE t (id INTEGER PRIMARY KEY, attributedBody BLOB, Name TEXT);"
                         "INSERT INTO t VALUES (1, x'0102', 'one'), (2, x'', ''), (3, NULL, NULL)");
        return database;
    }
};

TEST_F(SQLiteDatabaseTest, QueryOnlyNeverMakesAFile)
{
    const SQLiteError error = errorOf([&] { SQLiteDatabase(path, Mode::queryOnly); });
    EXPECT_EQ(error, SQLiteError(Stage::open, 14, "unable to open database file"));
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, CreateMakesAnEmptyDatabase)
{
    const SQLiteDatabase database(path, Mode::create);
    EXPECT_THAT(folder.names(), ElementsAre("test.db"));
    EXPECT_THAT(database.columns("sqlite_master"), ::testing::Contains("sql"));
    EXPECT_THAT(database.columns("anything"), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, QueryOnlyRefusesEveryChangeAtTheStep)
{
    filled();
    const SQLiteDatabase database(path, Mode::queryOnly);
    for (const char* change : {"INSERT INTO t (id) VALUES (9)", "UPDATE t SET id = 9", "DELETE FROM t"}) {
        const SQLiteError error = errorOf([&] { database.run(change, {}); });
        EXPECT_EQ(error.stage(), Stage::step) << change;
        EXPECT_EQ(error.code(), 8) << change;
    }
}

TEST_F(SQLiteDatabaseTest, QueryOnlyTrustsNoSchema)
{
    filled();
    const SQLiteDatabase database(path, Mode::queryOnly);
    std::vector<std::int64_t> trusted;
    database.query("PRAGMA trusted_schema", {}, [&](const SQLiteRow& row) { trusted.push_back(row.int64OrZero(0)); });
    EXPECT_THAT(trusted, ElementsAre(0));
    database.execute("PRAGMA writable_schema = ON"); // without effect in a defensive connection
    EXPECT_EQ(errorOf([&] { database.run("UPDATE sqlite_master SET sql = ''", {}); }),
              SQLiteError(Stage::prepare, 1, "table sqlite_master may not be modified"));
}

TEST_F(SQLiteDatabaseTest, QueryOnlyLimitsWhatAFileMayAskFor)
{
    filled();
    const SQLiteDatabase database(path, Mode::queryOnly);
    constexpr std::int64_t longest = 64 * 1024 * 1024;
    const auto makeBlob = [&](std::int64_t size) { database.run("SELECT length(zeroblob(?))", {size}); };
    makeBlob(longest);
    EXPECT_EQ(errorOf([&] { makeBlob(longest + 1); }), SQLiteError(Stage::step, 18, "string or blob too big"));
    EXPECT_EQ(errorOf([&] { database.run("SELECT 1 -- " + std::string(1024 * 1024, 'x'), {}); }).code(), 18);
    EXPECT_THAT(errorOf([&] { database.run("ATTACH ':memory:' AS other", {}); }).what(),
                ::testing::HasSubstr("too many attached databases - max 0"));
    std::string deep = "SELECT id";
    for (int i = 0; i < 200; ++i) deep += " + id";
    EXPECT_THAT(errorOf([&] { database.run(deep + " FROM t", {}); }).what(),
                ::testing::HasSubstr("Expression tree is too large (maximum depth 200)"));
}

TEST_F(SQLiteDatabaseTest, ColumnNamesComeBackInLowerCase)
{
    EXPECT_THAT(filled().columns("t"), UnorderedElementsAre("id", "attributedbody", "name"));
}

TEST_F(SQLiteDatabaseTest, AnUnknownTableHasNoColumns)
{
    EXPECT_THAT(filled().columns("missing"), IsEmpty());
}

TEST_F(SQLiteDatabaseTest, NullReadsAsNothingAndAnEmptyBlobAsAnEmptyBuffer)
{
    std::vector<std::optional<ByteBuffer>> blobs;
    std::vector<std::optional<std::string>> texts;
    std::vector<std::optional<std::int64_t>> numbers;
    std::vector<bool> nulls;
    filled().query("SELECT attributedBody, Name, CASE id WHEN 3 THEN NULL ELSE id END FROM t ORDER BY id", {},
                   [&](const SQLiteRow& row) {
                       nulls.push_back(row.isNull(0));
                       blobs.push_back(row.blob(0));
                       texts.push_back(row.text(1));
                       numbers.push_back(row.int64(2));
                       EXPECT_EQ(row.int64OrZero(2), row.int64(2).value_or(0));
                   });
    EXPECT_THAT(nulls, ElementsAre(false, false, true));
    EXPECT_THAT(blobs, ElementsAre(ByteBuffer{std::byte{1}, std::byte{2}}, ByteBuffer(), std::nullopt));
    EXPECT_THAT(texts, ElementsAre("one", "", std::nullopt));
    EXPECT_THAT(numbers, ElementsAre(1, 2, std::nullopt));
}

TEST_F(SQLiteDatabaseTest, BindsEveryKindOfValue)
{
    const SQLiteDatabase database(path, Mode::create);
    const std::vector<SQLiteValue> values = {std::int64_t{-7}, std::string("text"), ByteBuffer{std::byte{0}},
                                             ByteBuffer(), nullptr};
    std::vector<std::string> types;
    database.query("SELECT typeof(?1), typeof(?2), typeof(?3), typeof(?4), typeof(?5), ?1, ?2, length(?3)", values,
                   [&](const SQLiteRow& row) {
                       for (int i = 0; i < 5; ++i) types.push_back(row.text(i).value());
                       EXPECT_EQ(row.int64(5), -7);
                       EXPECT_EQ(row.text(6), "text");
                       EXPECT_EQ(row.int64(7), 1);
                   });
    EXPECT_THAT(types, ElementsAre("integer", "text", "blob", "blob", "null"));
}

TEST_F(SQLiteDatabaseTest, TextEndsAtTheFirstNulAndIsRepaired)
{
    const SQLiteDatabase database(path, Mode::create);
    int rows = 0;
    database.query("SELECT CAST(x'41004200' AS TEXT), CAST(x'FF41E282' AS TEXT)", {}, [&](const SQLiteRow& row) {
        EXPECT_EQ(row.text(0), "A");
        EXPECT_EQ(row.text(1), "\uFFFDA\uFFFD");
        EXPECT_EQ(row.rawText(1), "\xFF\x41\xE2\x82");
        ++rows;
    });
    EXPECT_EQ(rows, 1);
}

TEST_F(SQLiteDatabaseTest, TooManyValuesFailAtTheBinding)
{
    const SQLiteDatabase database = filled();
    const SQLiteError error = errorOf([&] { database.run("SELECT ?", {std::int64_t{1}, std::int64_t{2}}); });
    EXPECT_EQ(error.stage(), Stage::bind);
    EXPECT_EQ(error.code(), 25);
}

TEST_F(SQLiteDatabaseTest, AWrongStatementFailsAtThePreparation)
{
    const SQLiteDatabase database = filled();
    EXPECT_EQ(errorOf([&] { database.query("SELECT * FROM chat", {}, [](const SQLiteRow&) {}); }),
              SQLiteError(Stage::prepare, 1, "no such table: chat"));
    const SQLiteError empty = errorOf([&] { database.run("", {}); });
    EXPECT_EQ(empty.stage(), Stage::prepare);
    EXPECT_EQ(empty.code(), 0);
}

TEST_F(SQLiteDatabaseTest, ExecuteFailsWithSQLitesWords)
{
    const SQLiteDatabase database = filled();
    EXPECT_EQ(errorOf([&] { database.execute("SELECT 1; nonsense"); }),
              SQLiteError(Stage::execute, 1, "near \"nonsense\": syntax error"));
}

TEST_F(SQLiteDatabaseTest, WhatTheRowClosureThrowsEndsTheQueryAndReleasesTheStatement)
{
    const SQLiteDatabase database = filled();
    int rows = 0;
    EXPECT_THROW(database.query("SELECT id FROM t", {},
                                [&](const SQLiteRow&) {
                                    ++rows;
                                    throw std::out_of_range("enough");
                                }),
                 std::out_of_range);
    EXPECT_EQ(rows, 1);
    database.execute("DROP TABLE t"); // would be refused if the statement were still open
}

TEST_F(SQLiteDatabaseTest, APreparedStatementRunsAgain)
{
    const SQLiteDatabase database = filled();
    SQLiteStatement insert = database.prepare("INSERT INTO t VALUES (?, NULL, ?)");
    insert.run({7, "seven"});
    EXPECT_EQ(errorOf([&] { insert.run({7, "again"}); }).code() & 0xFF, 19) << "no second row of that number";
    insert.run({8, "eight"});
    SQLiteStatement select = database.prepare("SELECT Name FROM t WHERE id >= ? ORDER BY id");
    const auto namesFrom = [&](std::int64_t id, bool onlyFirst) {
        std::vector<std::string> names;
        const auto take = [&](const SQLiteRow& row) {
            names.push_back(row.text(0).value_or(""));
            if (onlyFirst) throw std::out_of_range("enough");
        };
        try {
            select.query({id}, take);
        } catch (const std::out_of_range&) {
            EXPECT_TRUE(onlyFirst);
        }
        return names;
    };
    EXPECT_THAT(namesFrom(7, true), ElementsAre("seven"));
    EXPECT_THAT(namesFrom(7, false), ElementsAre("seven", "eight"))
        << "from the beginning, though the last run broke off";
    EXPECT_THAT(namesFrom(8, false), ElementsAre("eight"));
}

TEST_F(SQLiteDatabaseTest, KeepsTheLogOnClosingWhenAsked)
{
    for (const bool keep : {false, true}) {
        std::filesystem::remove(path);
        {
            const SQLiteDatabase database(path, Mode::create);
            database.execute("PRAGMA journal_mode = WAL; CREATE TABLE t (id INTEGER)");
            if (keep) database.keepLogOnClose();
        }
        EXPECT_EQ(std::filesystem::exists(path + "-wal"), keep);
    }
}

TEST_F(SQLiteDatabaseTest, AStepThatFailsReportsIt)
{
    const SQLiteDatabase database = filled();
    const SQLiteError error = errorOf([&] { database.run("SELECT abs(-9223372036854775808)", {}); });
    EXPECT_EQ(error, SQLiteError(Stage::step, 1, "integer overflow"));
}

TEST_F(SQLiteDatabaseTest, AFileThatIsNoDatabaseIsDamage)
{
    testing::writeFile(path, std::string(8192, 'x'));
    const SQLiteDatabase database(path, Mode::queryOnly);
    const SQLiteError error = errorOf([&] { database.columns("t"); });
    EXPECT_EQ(error.code(), 26);
    EXPECT_TRUE(error.isCorruption());
}

TEST_F(SQLiteDatabaseTest, ReadsRowsThatAreOnlyInTheLog)
{
    const SQLiteDatabase writer(path, Mode::create);
    writer.execute("PRAGMA journal_mode = WAL; CREATE TABLE t (id INTEGER); INSERT INTO t VALUES (5)");
    for (const char* suffix : {"", "-wal"}) {
        std::filesystem::copy_file(path + suffix, (folder / "copy.db").string() + suffix);
    }
    std::vector<std::int64_t> ids;
    SQLiteDatabase((folder / "copy.db").string(), Mode::queryOnly)
        .query("SELECT id FROM t", {}, [&](const SQLiteRow& row) { ids.push_back(row.int64(0).value()); });
    EXPECT_THAT(ids, ElementsAre(5));
}

TEST_F(SQLiteDatabaseTest, WaitsForAnotherConnectionsLockThenReportsBusy)
{
    const SQLiteDatabase owner = filled();
    owner.execute("BEGIN EXCLUSIVE");
    const SQLiteDatabase other(path, Mode::queryOnly);
    auto blocked = std::async(std::launch::async, [&] { return errorOf([&] { other.columns("t"); }); });
    const SQLiteError error = blocked.get();
    EXPECT_EQ(error.code(), 5);
    EXPECT_FALSE(error.isCorruption());
    owner.execute("COMMIT");
    EXPECT_THAT(other.columns("t"), ::testing::SizeIs(3));
}

TEST_F(SQLiteDatabaseTest, WaitsTwoSecondsForALock)
{
    filled();
    for (const Mode mode : {Mode::create, Mode::queryOnly}) {
        std::vector<std::int64_t> milliseconds;
        SQLiteDatabase(path, mode).query("PRAGMA busy_timeout", {}, [&](const SQLiteRow& row) {
            milliseconds.push_back(row.int64OrZero(0));
        });
        EXPECT_THAT(milliseconds, ElementsAre(2000));
    }
}

TEST_F(SQLiteDatabaseTest, StopsALongStatementWhenAsked)
{
    SQLiteDatabase database(path, Mode::create);
    int asked = 0;
    database.stopWhen([&asked] { return ++asked == 3; });
    const SQLiteError error = errorOf([&] {
        database.run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT sum(i) FROM n", {});
    });
    EXPECT_EQ(error.stage(), Stage::step);
    EXPECT_EQ(error.code(), 9);
    EXPECT_EQ(asked, 3);
}

} // namespace
} // namespace vorn
