#include "Tools/Export/ExportFailure.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace vorn {
namespace {

std::filesystem::filesystem_error fileError(std::errc code)
{
    return {"cannot", "/private/path", std::make_error_code(code)};
}

TEST(ExportFailure, TellsEachReasonInTheApplicationsWords)
{
    using Error = NimbrelExportError;
    EXPECT_EQ(failureOfReading(Error(Error::NoDatabase{})),
              (ExportFailure{ExportStatus::noDatabase, "Messages isn't set up on this Mac."}));
    EXPECT_EQ(
        failureOfReading(Error(Error::AccessDenied{})),
        (ExportFailure{ExportStatus::accessDenied, "Allow Full Disk Access so Vorn can read Messages.\n"
                                                   "Open System Settings → Privacy & Security → Full Disk Access."}));
    EXPECT_EQ(failureOfReading(Error(Error::SnapshotUnreadable{})),
              (ExportFailure{ExportStatus::unreadable, "Messages was busy. Try again in a moment."}));
    EXPECT_EQ(
        failureOfReading(Error(Error::Database{SQLiteError(SQLiteError::Stage::prepare, 1, "no such table: chat")})),
        (ExportFailure{ExportStatus::databaseError, "Vorn couldn't read your Messages history.\n"
                                                    "SQLite prepare failed (1): no such table: chat"}));
}

TEST(ExportFailure, NamesTheSystemsReasonWithoutPathsOfTheCopy)
{
    EXPECT_EQ(
        failureOfReading(fileError(std::errc::no_space_on_device)),
        (ExportFailure{ExportStatus::copyFailed,
                       "Vorn couldn't make its private copy of your Messages history: No space left on device."}));
}

TEST(ExportFailure, NamesOtherProblemsAsTheyAre)
{
    EXPECT_EQ(failureOfReading(std::runtime_error("something else")),
              (ExportFailure{ExportStatus::failed, "Vorn ran into a problem: something else."}));
}

TEST(ExportFailure, NamesTheOutputThatCannotBeWritten)
{
    EXPECT_EQ(failureOfWriting(fileError(std::errc::permission_denied), "out.zip"),
              (ExportFailure{ExportStatus::outputNotWritable,
                             "Vorn couldn't write the archive to out.zip: Permission denied."}));
}

} // namespace
} // namespace vorn
