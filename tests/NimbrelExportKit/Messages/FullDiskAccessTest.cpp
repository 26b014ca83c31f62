#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using FullDiskAccess::probe;
using testing::TemporaryFolder;

/// Probes as a user who is not the owner: the superuser may read everything.
FullDiskAccessStatus probeAsNobody(const fs::path& path)
{
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && setuid(nobody) != 0) _exit(100);
        _exit(static_cast<int>(probe(path)));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 100);
    return static_cast<FullDiskAccessStatus>(WEXITSTATUS(status));
}

TEST(FullDiskAccess, IsGrantedForAFileThatOpens)
{
    const TemporaryFolder folder;
    testing::writeFile(folder / "chat.db", "");
    EXPECT_EQ(probe(folder / "chat.db"), FullDiskAccessStatus::granted);
}

TEST(FullDiskAccess, IsDeniedBehindAFolderThatMayNotBeRead)
{
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms::all);
    fs::create_directory(folder / "locked");
    testing::writeFile(folder / "locked/chat.db", "");
    fs::permissions(folder / "locked", fs::perms::none);
    EXPECT_EQ(probeAsNobody(folder / "locked/chat.db"), FullDiskAccessStatus::denied);
    EXPECT_EQ(probeAsNobody(folder / "missing/chat.db"), FullDiskAccessStatus::noDatabase);
    fs::permissions(folder / "locked", fs::perms::owner_all);
}

TEST(FullDiskAccess, KnowsAMissingDatabaseFromARefusedOne)
{
    const TemporaryFolder folder;
    testing::writeFile(folder / "file", "");
    EXPECT_EQ(probe(folder / "missing"), FullDiskAccessStatus::noDatabase);
    EXPECT_EQ(probe(folder / "file/chat.db"), FullDiskAccessStatus::denied); // any other failure
}

TEST(FullDiskAccess, KnowsWhereMessagesKeepsItsDatabase)
{
    EXPECT_EQ(FullDiskAccess::messagesDatabaseURL(), fs::path(getpwuid(getuid())->pw_dir) / "Library/Messages/chat.db");
}

TEST(FullDiskAccess, LinksToTheSettings)
{
    EXPECT_EQ(FullDiskAccess::settingsURL, "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles");
    EXPECT_EQ(FullDiskAccess::fallbackSettingsURL,
              "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension");
}

} // namespace
} // namespace vorn
