// scripts/compare-exports on one system, with simulated differences between two.
#include "Platform/Base/SHA256.h"
#include "Platform/SQLite/SQLiteDatabase.h"
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <memory>

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using testing::Program;

class ComparedExports {
public:
    ComparedExports()
    {
        const auto made = run({"make", folder_.path(), "--messages", "1000"});
        EXPECT_EQ(made->exitCode(), 0) << made->errors();
        EXPECT_THAT(made->output(), HasSubstr("  chat.db-wal\n"));
    }

    std::unique_ptr<Program> check(const Program::Environment& environment = {}) const
    {
        return run({"check", folder_.path()}, environment);
    }

    /// Replaces the archive from "there" with one of the history after `change`.
    void exportThere(const std::string& change, std::vector<std::string> handles) const
    {
        const testing::TemporaryFolder other;
        for (const char* name : {"chat.db", "chat.db-wal"}) std::filesystem::copy_file(folder_ / name, other / name);
        SQLiteDatabase(other / "chat.db", SQLiteDatabase::Mode::create).execute(change);
        std::vector<std::string> arguments{"--database",           other / "chat.db", "--exported-at",
                                           "2026-03-01T09:15:00Z", "--output",        folder_ / "export.zip"};
        for (std::string& handle : handles) arguments.insert(arguments.end(), {"--handle", std::move(handle)});
        EXPECT_EQ(Program(EXPORT_PROGRAM, arguments).exitCode(), 0);
        std::string sums;
        for (const char* name : {"chat.db", "chat.db-wal", "export.zip"}) {
            sums += fmt::format("{}  {}\n", SHA256::hexDigestOfFile(folder_ / name), name);
        }
        testing::writeFile(folder_ / "SHA256SUMS", sums);
    }

    std::filesystem::path operator/(std::string_view name) const { return folder_ / name; }

private:
    static std::unique_ptr<Program> run(std::vector<std::string> arguments,
                                        const Program::Environment& environment = {})
    {
        arguments.insert(arguments.begin(), {"python3", COMPARE_EXPORTS});
        arguments.insert(arguments.end(), {"--programs", std::filesystem::path(EXPORT_PROGRAM).parent_path()});
        return std::make_unique<Program>("/usr/bin/env", std::move(arguments), environment);
    }

    testing::TemporaryFolder folder_;
};

TEST(CompareExports, FindsOneSystemEqualToItselfInAnyTimeZone)
{
    const ComparedExports fix;
    const auto checked = fix.check({{"TZ", "Asia/Tokyo"}});
    EXPECT_EQ(checked->exitCode(), 0) << checked->errors();
    EXPECT_THAT(checked->output(),
                AllOf(HasSubstr("messages: equal, "), HasSubstr("manifest: equal but for exporter.os"),
                      HasSubstr("here (2026, 3, 1, 18, 15, 0)")));
}

TEST(CompareExports, ShowsTheFirstMessageThatDiffers)
{
    const ComparedExports fix;
    fix.exportThere("UPDATE message SET text = 'changed', attributedBody = NULL WHERE ROWID = "
                    "(SELECT m.ROWID FROM message m JOIN chat_message_join j ON j.message_id = m.ROWID JOIN chat c ON "
                    "c.ROWID = j.chat_id WHERE c.guid = 'any;-;+15550102030' AND m.text LIKE '% %' AND m.date > 0 AND "
                    "m.associated_message_type = 0 LIMIT 1)",
                    {"+15550102030", "nimbrel@example.com"});
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(), AllOf(HasSubstr("messages: DIFFERENT. 1 of "), HasSubstr("text: there 'changed'\n"),
                                         HasSubstr("manifest: equal")));
}

TEST(CompareExports, ShowsManifestsThatDiffer)
{
    const ComparedExports fix;
    fix.exportThere("SELECT 1", {"+15550102030"});
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 1) << checked->errors();
    EXPECT_THAT(checked->output(), HasSubstr("manifest: DIFFERENT\n"));
}

TEST(CompareExports, RefusesAFolderThatDidNotArriveAsItWasMade)
{
    const ComparedExports fix;
    std::filesystem::resize_file(fix / "chat.db-wal", 4096);
    const auto checked = fix.check();
    EXPECT_EQ(checked->exitCode(), 2);
    EXPECT_THAT(checked->errors(), HasSubstr("did not arrive as it was made\n"));
}

} // namespace
} // namespace vorn
