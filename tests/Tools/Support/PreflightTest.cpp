#include "Tools/Support/Preflight.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn::preflight {
namespace {

TEST(Preflight, KnowADatabaseByItsBeginning)
{
    using namespace std::string_literals;
    const testing::TemporaryFolder folder;
    EXPECT_EQ(databaseFileAt(folder / "chat.db"), DatabaseFile::missing);
    EXPECT_EQ(databaseFileAt(folder.path()), DatabaseFile::noDatabase);
    for (const auto& [content, file] : {
             std::pair(""s, DatabaseFile::plausible),
             std::pair("SQLite format 3\0"s, DatabaseFile::plausible),
             std::pair("SQLite format 3\0 and more"s, DatabaseFile::plausible),
             std::pair("SQLite format 3"s, DatabaseFile::noDatabase),
             std::pair("SQLite format 4\0"s, DatabaseFile::noDatabase),
             std::pair("PK\3\4 something else entirely"s, DatabaseFile::noDatabase),
         }) {
        testing::writeFile(folder / "chat.db", content);
        EXPECT_EQ(databaseFileAt(folder / "chat.db"), file) << content;
    }
    EXPECT_EQ(databaseFileAt(folder / "chat.db/below"), DatabaseFile::plausible) << "denied, not missing";
}

TEST(Preflight, SayWhatLiesThereInOneLine)
{
    EXPECT_EQ(textOf(DatabaseFile::missing, "/a/chat.db"), "There is no database at /a/chat.db.");
    EXPECT_EQ(textOf(DatabaseFile::noDatabase, "/a\n/chat.db"), "/a\uFFFD/chat.db is not a database.");
}

TEST(Preflight, NeedAFolderForTemporaryFiles)
{
    const testing::TemporaryFolder folder;
    testing::writeFile(folder / "file", "");
    const testing::ScopedEnvironment fit("TMPDIR", folder.path().string());
    EXPECT_EQ(mistakeInTemporaryDirectory(), std::nullopt);
    const testing::ScopedEnvironment missing("TMPDIR", (folder / "none").string());
    EXPECT_EQ(mistakeInTemporaryDirectory(), "The folder for temporary files, " + (folder / "none").string() +
                                                 ", cannot be used: No such file or directory. TMPDIR names it.");
    const testing::ScopedEnvironment file("TMPDIR", (folder / "file").string());
    EXPECT_EQ(mistakeInTemporaryDirectory(), "The folder for temporary files, " + (folder / "file").string() +
                                                 ", cannot be used: Not a directory. TMPDIR names it.");
}

} // namespace
} // namespace vorn::preflight
