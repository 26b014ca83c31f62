#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using ::testing::ElementsAre;

TEST(SampleHistoryLog, NewestRowsAreSeenOnlyWithTheLog)
{
    const TemporaryFolder folder;
    const auto summary = writeSampleHistory(folder / "chat.db", {.messages = 900, .inLog = 120});
    EXPECT_EQ(summary.inLog, 120);
    EXPECT_THAT(folder.names(), ElementsAre("chat.db", "chat.db-wal"));

    std::filesystem::copy_file(folder / "chat.db", folder / "alone.db");
    const auto newest = [](const std::filesystem::path& path) {
        std::int64_t rowID = 0;
        const SQLiteDatabase database(path.string(), SQLiteDatabase::Mode::queryOnly);
        database.query("SELECT max(ROWID) FROM message", {},
                       [&](const SQLiteRow& row) { rowID = row.int64(0).value_or(0); });
        return rowID;
    };
    EXPECT_EQ(newest(folder / "alone.db"), 780);
    EXPECT_EQ(newest(folder / "chat.db"), 900);
}

TEST(SampleHistoryLog, EveryRowMayBeInTheLog)
{
    const WrittenHistory history({.messages = 60, .inLog = 60});
    EXPECT_THAT(history.folder().names(), ElementsAre("chat.db", "chat.db-wal"));
    EXPECT_EQ(history.number("SELECT count(*) FROM message"), 60);
    EXPECT_EQ(history.summary().expected.keptInLog, history.summary().expected.kept);
}

TEST(SampleHistoryLog, WithoutRowsInItThereIsNone)
{
    const WrittenHistory history({.messages = 60});
    EXPECT_THAT(history.folder().names(), ElementsAre("chat.db"));
}

TEST(SampleHistoryLog, WhereARowStandsDoesNotChangeIt)
{
    const WrittenHistory settled({.messages = 1'500});
    const WrittenHistory fresh({.messages = 1'500, .inLog = 700});
    auto left = settled.content();
    auto right = fresh.content();
    for (auto* content : {&left, &right}) { // statistics are taken when the main file is complete
        std::erase_if(*content, [](const auto& column) { return column.first.starts_with("sqlite_stat1."); });
    }
    for (const auto& [column, values] : left) EXPECT_EQ(values, right[column]) << column;
    EXPECT_EQ(left.size(), right.size());
    EXPECT_THAT(fresh.texts("PRAGMA integrity_check"), ElementsAre("ok"));
}

} // namespace
} // namespace vorn::testing
