#include "NimbrelExportKit/Messages/NimbrelExportError.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Error = NimbrelExportError;

const SQLiteError busy(SQLiteError::Stage::step, 5, "database is locked");

TEST(NimbrelExportError, DescribesItselfForTheLog)
{
    EXPECT_STREQ(Error(Error::Database{busy}).what(), "SQLite step failed (5): database is locked");
    EXPECT_STREQ(Error(Error::NoDatabase{}).what(), "no Messages database");
    EXPECT_STREQ(Error(Error::AccessDenied{}).what(), "access to the Messages database denied");
    EXPECT_STREQ(Error(Error::SnapshotUnreadable{}).what(), "every snapshot was damaged");
}

TEST(NimbrelExportError, IsComparedByValue)
{
    EXPECT_EQ(Error(Error::NoDatabase{}), Error(Error::NoDatabase{}));
    EXPECT_NE(Error(Error::NoDatabase{}), Error(Error::AccessDenied{}));
    EXPECT_EQ(Error(Error::Database{busy}), Error(Error::Database{busy}));
    EXPECT_NE(Error(Error::Database{busy}), Error(Error::Database{SQLiteError(SQLiteError::Stage::step, 6, "")}));
}

TEST(NimbrelExportError, KnowsItsCase)
{
    const Error error(Error::Database{busy});
    EXPECT_TRUE(error.is<Error::Database>());
    EXPECT_FALSE(error.is<Error::SnapshotUnreadable>());
    EXPECT_EQ(std::get<Error::Database>(error.reason()).error, busy);
}

TEST(NimbrelExportError, IsCaughtAsAStandardException)
{
    try {
        throw Error(Error::NoDatabase{});
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "no Messages database");
    }
}

} // namespace
} // namespace vorn
