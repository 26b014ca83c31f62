#include "Platform/SQLite/SQLiteError.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Stage = SQLiteError::Stage;

TEST(SQLiteError, DescribesItsStageCodeAndMessage)
{
    EXPECT_STREQ(SQLiteError(Stage::open, 14, "unable to open database file").what(),
                 "SQLite open failed (14): unable to open database file");
    EXPECT_STREQ(SQLiteError(Stage::prepare, 1, "no such table: chat").what(),
                 "SQLite prepare failed (1): no such table: chat");
    EXPECT_STREQ(SQLiteError(Stage::bind, 25, "m").what(), "SQLite bind failed (25): m");
    EXPECT_STREQ(SQLiteError(Stage::step, 8, "m").what(), "SQLite step failed (8): m");
    EXPECT_STREQ(SQLiteError(Stage::execute, 1, "").what(), "SQLite execute failed (1): ");
}

TEST(SQLiteError, IsCorruptionByTheLowByteOfItsCode)
{
    for (const auto& [code, damaged] : {std::pair{11, true},
                                        {26, true},
                                        {267, true},
                                        {26 | 3 << 8, true},
                                        {5, false},
                                        {6, false},
                                        {10, false},
                                        {0, false},
                                        {1, false},
                                        {522, false}}) {
        EXPECT_EQ(SQLiteError(Stage::step, code, "").isCorruption(), damaged) << code;
    }
}

TEST(SQLiteError, IsComparedByValue)
{
    const SQLiteError error(Stage::step, 5, "busy");
    EXPECT_EQ(error, SQLiteError(Stage::step, 5, "busy"));
    EXPECT_NE(error, SQLiteError(Stage::prepare, 5, "busy"));
    EXPECT_NE(error, SQLiteError(Stage::step, 6, "busy"));
    EXPECT_NE(error, SQLiteError(Stage::step, 5, "locked"));
}

} // namespace
} // namespace vorn
