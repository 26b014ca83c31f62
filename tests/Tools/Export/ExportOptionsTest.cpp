#include "Tools/Export/ExportOptions.h"

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr Instant now = sys_days(2026y / March / 1) + 9h;

auto parse(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "vorn-export");
    return parseExportOptions(static_cast<int>(arguments.size()), arguments.data(), now);
}

ExportOptions options(const std::vector<const char*>& arguments)
{
    auto parsed = parse(arguments);
    EXPECT_TRUE(std::holds_alternative<ExportOptions>(parsed)) << std::get<ExportOptionsEnd>(parsed).text;
    return std::get<ExportOptions>(parsed);
}

std::string mistake(const std::vector<const char*>& arguments)
{
    const auto parsed = parse(arguments);
    const auto* end = std::get_if<ExportOptionsEnd>(&parsed);
    EXPECT_TRUE(end != nullptr && end->isMistake);
    return end != nullptr ? end->text : "";
}

TEST(ExportOptions, ReadEveryArgument)
{
    const ExportOptions read = options({"--database", "/a/chat.db", "--handle", "+1 555", "--handle", "a@b.c",
                                        "--output", "out.zip", "--exported-at", "2026-01-02T03:04:05Z", "--json"});
    EXPECT_EQ(read.database, "/a/chat.db");
    EXPECT_THAT(read.handles, ElementsAre("+1 555", "a@b.c"));
    EXPECT_EQ(read.output, "out.zip");
    EXPECT_EQ(read.exportedAt, Instant(sys_days(2026y / January / 2) + 3h + 4min + 5s));
    EXPECT_TRUE(read.json);
    EXPECT_FALSE(read.isUsersOwn);
    EXPECT_FALSE(read.allowEmpty);
    EXPECT_TRUE(options({"--handle", "x", "--output", "out.zip", "--allow-empty"}).allowEmpty);
}

TEST(ExportOptions, DefaultToThisUsersDatabaseAndNow)
{
    const ExportOptions read = options({"--handle", "x", "--output", "out.zip"});
    EXPECT_EQ(read.database, FullDiskAccess::messagesDatabaseURL());
    EXPECT_TRUE(read.isUsersOwn);
    EXPECT_EQ(read.exportedAt, now);
    EXPECT_FALSE(read.json);
}

TEST(ExportOptions, RefuseWhatMakesNoSense)
{
    EXPECT_THAT(mistake({}), HasSubstr("is required"));
    EXPECT_THAT(mistake({"--handle", "x"}), HasSubstr("--output is required"));
    EXPECT_THAT(mistake({"--output", "o.zip"}), HasSubstr("--handle is required"));
    EXPECT_THAT(mistake({"--handle", " ", "--output", "o.zip"}), HasSubstr("a handle must not be blank"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", "o.zip", "--exported-at", "noon"}),
                HasSubstr("not a time like 2026-03-01T09:15:00Z: noon"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", "o.zip", "--frobnicate"}), HasSubstr("--frobnicate"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", "o.zip", "stray"}), HasSubstr("stray"));
    EXPECT_THAT(mistake({"--output", "o.zip", "--handle", "a@b.c", "extra"}),
                HasSubstr("The following argument was not expected: extra"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", ""}), HasSubstr("--output must be a file: an archive is not"));
    EXPECT_THAT(mistake({"--frobnicate"}), HasSubstr("The following argument was not expected: --frobnicate\n"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", "o.zip", "-VornMessagesDatabaseOverride", "chat.db"}),
                HasSubstr("There is no -VornMessagesDatabaseOverride here. --database names another database\n"));
    EXPECT_THAT(mistake({"--handle", "x", "--output", "-"}),
                HasSubstr("--output must be a file: an archive is not for standard output\n"));
    EXPECT_THAT(mistake({"--handle", "x", "--exported-at", "\x1B[2J"}), HasSubstr("Z: \uFFFD[2J\n"));
    EXPECT_THAT(mistake({"--frobnicate"}), HasSubstr("Run with --help for more information.\n"));
}

TEST(ExportOptions, RefuseToWriteOverTheDatabaseAndWhatLiesBesideIt)
{
    const testing::TemporaryFolder folder;
    const std::string database = (folder / "chat.db").string();
    testing::writeFile(database, "database");
    for (const std::string& output : {database, database + "-wal", database + "-shm",
                                      (folder / "sub/../chat.db").string(), (folder / "link").string()}) {
        if (output.ends_with("link")) std::filesystem::create_symlink(database, output);
        EXPECT_EQ(mistake({"--database", database.c_str(), "--handle", "x", "--output", output.c_str()}),
                  "--output must be a file of its own, not the database\n")
            << output;
    }
}

TEST(ExportOptions, RefuseToBecomeTheDatabasesLogByAnyPath)
{
    const testing::TemporaryFolder folder;
    testing::writeFile(folder / "chat.db", "database"); // without a log
    std::filesystem::create_directory_symlink(folder.path(), folder / "linked");
    std::filesystem::create_symlink(folder / "chat.db", folder / "other.db");
    const std::string database = (folder / "chat.db").string();
    const std::string otherDatabase = (folder / "other.db").string();
    const std::string log = (folder / "linked/chat.db-wal").string();
    const std::string capitals = (folder / "CHAT.DB-WAL").string();
    const std::string relative = std::filesystem::relative(folder / "chat.db-wal").string();
    for (const std::string& output : {log, capitals, relative}) {
        for (const std::string& name : {database, otherDatabase}) {
            EXPECT_EQ(mistake({"--database", name.c_str(), "--handle", "x", "--output", output.c_str()}),
                      "--output must be a file of its own, not the database\n")
                << name << " " << output;
        }
    }
}

TEST(ExportOptions, GiveHelpAndVersion)
{
    const auto help = std::get<ExportOptionsEnd>(parse({"--help"}));
    EXPECT_FALSE(help.isMistake);
    for (const char* option : {"--database DB", "--handle H", "--output OUT.zip", "--exported-at TIME", "--json",
                               "--allow-empty", "--help", "--version"}) {
        EXPECT_THAT(help.text, HasSubstr(option));
    }
    const auto version = std::get<ExportOptionsEnd>(parse({"--version"}));
    EXPECT_FALSE(version.isMistake);
    EXPECT_THAT(version.text, ::testing::MatchesRegex("vorn-export [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

} // namespace
} // namespace vorn
