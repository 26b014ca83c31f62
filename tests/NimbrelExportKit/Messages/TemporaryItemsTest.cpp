#include "NimbrelExportKit/Messages/TemporaryItems.h"

#include "NimbrelExportKit/Messages/MessagesSnapshot.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/IncompleteFile.h"
#include "Platform/Base/UUID.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <array>
#include <csignal>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <thread>
#include <utility>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char* aUUID = "0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B";

struct TemporaryItemsTest : ::testing::Test {
    testing::TemporaryFolder folder;
    const std::string lockName = "vorn-" + std::to_string(geteuid()) + ".lock";

    std::unique_ptr<TemporaryItems> items() const
    {
        return std::make_unique<TemporaryItems>(folder.path(), Log("test", "items"));
    }
    void put(const std::string& name) const { testing::writeFile(folder / name, "text"); }
    void putSnapshot(const std::string& name) const
    {
        fs::create_directory(folder / name);
        testing::writeFile(folder / name / "chat.db", "messages");
    }
    std::vector<std::string> namesBesideTheLock() const
    {
        auto names = folder.names();
        std::erase(names, lockName);
        return names;
    }
};

/// Another process, which does something and then stays until it is told to end, or is killed.
class Other {
public:
    template <class Body>
    explicit Other(const Body& body)
    {
        if (pipe(ready_.data()) != 0 || pipe(end_.data()) != 0) throw std::runtime_error("no pipe");
        process_ = fork();
        if (process_ == 0) live(body);
        close(ready_[1]);
        close(end_[0]);
        char letter = 0;
        if (read(ready_[0], &letter, 1) != 1) throw std::runtime_error("the other process failed");
    }
    ~Other()
    {
        end(SIGKILL);
        close(ready_[0]);
        close(end_[1]);
    }
    Other(Other&&) = delete;

    void kill() { end(SIGKILL); }
    void endNormally()
    {
        [[maybe_unused]] const auto told = write(end_[1], "", 1);
        end(0);
    }

private:
    template <class Body>
    [[noreturn]] void live(const Body& body)
    {
        close(end_[1]);
        body([this] {
            char letter = 0;
            if (write(ready_[1], "", 1) != 1 || read(end_[0], &letter, 1) != 1) _exit(1);
        });
        _exit(0);
    }
    void end(int signal)
    {
        if (process_ < 0) return;
        if (signal != 0) ::kill(process_, signal);
        waitpid(std::exchange(process_, -1), nullptr, 0);
    }

    std::array<int, 2> ready_{}, end_{};
    pid_t process_ = -1;
};

TEST_F(TemporaryItemsTest, RemovesAtTheStartWhatAKilledProcessLeft)
{
    const testing::TemporaryFolder home;
    const testing::MessagesFixture history(home / "chat.db");
    Other other([&](const auto& stay) {
        const auto own = items();
        testing::RefusingFileManager files(folder.path());
        const auto snapshot = MessagesSnapshot::take(history.path(), files, {});
        put(temporarynames::archive.make());
        const auto incomplete = IncompleteFile::named(folder.path());
        stay();
    });
    const auto left = namesBesideTheLock();
    ASSERT_THAT(left, SizeIs(3));
    EXPECT_THAT(left, ::testing::Each(::testing::ResultOf(&TemporaryItems::isName, true)));
    other.kill();
    const auto own = items();
    EXPECT_THAT(namesBesideTheLock(), IsEmpty());
}

TEST_F(TemporaryItemsTest, KeepsWhatBelongsToALivingProcess)
{
    const Other other([&](const auto& stay) {
        const auto own = items();
        putSnapshot(std::string("vorn-messages-") + aUUID);
        stay();
    });
    for (int start = 0; start < 3; ++start) {
        const auto own = items();
        EXPECT_THAT(namesBesideTheLock(), ElementsAre(std::string("vorn-messages-") + aUUID));
    }
    EXPECT_EQ(testing::readFile(folder / (std::string("vorn-messages-") + aUUID) / "chat.db"), "messages");
}

TEST_F(TemporaryItemsTest, TheLastToEndRemovesWhatWasKilledBesideIt)
{
    auto own = items();
    Other killed([&](const auto& stay) {
        const auto its = items();
        putSnapshot(std::string("vorn-messages-") + aUUID);
        stay();
    });
    Other living([&](const auto& stay) {
        const auto its = items();
        stay();
    });
    killed.kill();
    own.reset();
    EXPECT_THAT(folder.names(), ElementsAre(lockName, std::string("vorn-messages-") + aUUID))
        << "whose they are, nobody can tell while one lives";
    living.endNormally();
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(TemporaryItemsTest, LeavesNothingOfItsOwn)
{
    {
        const auto own = items();
        EXPECT_THAT(folder.names(), ElementsAre(lockName));
        EXPECT_EQ(fs::status(folder / lockName).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

/// The descriptor that this process will get for the next file it opens.
int nextDescriptor()
{
    return FileDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)).get();
}

/// A start races with an end: the last other process removes the lock file that this process has just opened.
TEST_F(TemporaryItemsTest, SharesTheLockThatOthersWillFind)
{
    FileDescriptor last = createPrivateFile(folder / lockName);
    ASSERT_EQ(flock(last.get(), LOCK_EX), 0);
    const int opened = nextDescriptor();
    std::unique_ptr<TemporaryItems> own;
    std::thread start([&] { own = items(); });
    while (fcntl(opened, F_GETFD) < 0) sched_yield();
    fs::remove(folder / lockName);
    last.reset();
    start.join();
    EXPECT_THAT(folder.names(), ElementsAre(lockName));
}

TEST_F(TemporaryItemsTest, ProcessesThatComeAndGoNeverTakeEachOthersItems)
{
    constexpr int processes = 4;
    std::vector<pid_t> children;
    for (int each = 0; each < processes; ++each) {
        const pid_t child = fork();
        if (child == 0) {
            for (int round = 0; round < 150; ++round) {
                const auto own = items();
                const fs::path item = folder / ("vorn-nimbrel-" + newUUID() + ".zip");
                testing::writeFile(item, "archive");
                sched_yield();
                if (unlink(item.c_str()) != 0) _exit(1); // another process removed it
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(TemporaryItemsTest, KnowsItsNames)
{
    const std::string uuid = aUUID;
    for (const auto& name : {"vorn-messages-" + uuid, "vorn-nimbrel-" + uuid + ".zip", ".incomplete-" + uuid})
        EXPECT_TRUE(TemporaryItems::isName(name)) << name;
    const std::vector<std::string> others = {
        "vorn-messages-",
        "vorn-messages-backup",
        "vorn-messages-" + uuid + "~",
        "vorn-messages-" + uuid.substr(1),
        "vorn-messages-" + uuid.substr(0, 35) + "G",
        "vorn-messages-" + std::string(36, '-'),
        "vorn-messages-" + std::string(36, 'A'),
        "vorn-messages-0f3a41c2-9b7d-4e55-8a10-5c6d7e8f9a0b",
        "my-vorn-messages-" + uuid,
        "vorn-nimbrel-" + uuid,
        "vorn-nimbrel-chat.zip",
        "vorn-nimbrel-.zip",
        "vorn-nimbrel.zip",
        "vorn-nimbrel-" + uuid + ".zip.part",
        "incomplete-" + uuid,
        uuid,
    };
    for (const std::string& name : others) EXPECT_FALSE(TemporaryItems::isName(name)) << name;
}

TEST_F(TemporaryItemsTest, KeepsWhatIsNotAsVornMakesIt)
{
    const std::string uuid = aUUID;
    const testing::TemporaryFolder elsewhere;
    testing::writeFile(elsewhere / "kept", "text");
    fs::create_directory_symlink(elsewhere.path(), folder / ("vorn-messages-" + uuid));
    fs::create_symlink(elsewhere / "kept", folder / ("vorn-nimbrel-" + uuid + ".zip"));
    putSnapshot(".incomplete-" + uuid);
    put("vorn-messages-notes");
    const auto before = folder.names();
    {
        const auto own = items();
        EXPECT_THAT(namesBesideTheLock(), before);
    }
    EXPECT_EQ(folder.names(), before);
    EXPECT_THAT(elsewhere.names(), ElementsAre("kept"));
}

TEST_F(TemporaryItemsTest, FollowsNoLinkInsideOfWhatItRemoves)
{
    const testing::TemporaryFolder elsewhere;
    testing::writeFile(elsewhere / "kept", "text");
    putSnapshot(std::string("vorn-messages-") + aUUID);
    fs::create_directory_symlink(elsewhere.path(), folder / (std::string("vorn-messages-") + aUUID) / "link");
    const auto own = items();
    EXPECT_THAT(namesBesideTheLock(), IsEmpty());
    EXPECT_THAT(elsewhere.names(), ElementsAre("kept"));
}

TEST_F(TemporaryItemsTest, KeepsWhatBelongsToAnotherUser)
{
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give a file away";
    const std::string name = std::string(".incomplete-") + aUUID;
    put(name);
    ASSERT_EQ(chown((folder / name).c_str(), 12345, 12345), 0);
    const auto own = items();
    EXPECT_THAT(namesBesideTheLock(), ElementsAre(name));
}

/// What is in the lock's place, and the line logged about it.
struct WrongLock {
    const char* name;
    void (*make)(const fs::path& path);
};

void PrintTo(const WrongLock& wrong, std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *out << wrong.name;
}

constexpr std::array wrongLocks{
    WrongLock{"Link", [](const fs::path& path) { fs::create_symlink("elsewhere", path); }},
    WrongLock{"Folder", [](const fs::path& path) { fs::create_directory(path); }},
    WrongLock{"Pipe", [](const fs::path& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); }},
    WrongLock{"OpenToOthers",
              [](const fs::path& path) {
                  testing::writeFile(path, "");
                  ASSERT_EQ(chmod(path.c_str(), 0644), 0);
              }},
};

struct WrongLockTest : TemporaryItemsTest, ::testing::WithParamInterface<WrongLock> {};

TEST_P(WrongLockTest, KeepsItFromSweeping)
{
    const testing::CapturedLog log;
    const std::string item = std::string(".incomplete-") + aUUID;
    put(item);
    GetParam().make(folder / lockName);
    {
        const auto own = items();
    }
    EXPECT_THAT(folder.names(), ElementsAre(item, lockName));
    EXPECT_THAT(log.lines(), ElementsAre(StartsWith("[items] temporary items not swept: ")));
    EXPECT_THAT(log.lines().front(), ::testing::Not(::testing::HasSubstr(folder.path().native())));
}

INSTANTIATE_TEST_SUITE_P(Kinds, WrongLockTest, ::testing::ValuesIn(wrongLocks),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(TemporaryItemsTest, SaysWhenThereIsNoSuchFolder)
{
    const testing::CapturedLog log;
    {
        const TemporaryItems own(folder / "missing", Log("test", "items"));
    }
    EXPECT_THAT(log.lines(), ElementsAre("[items] temporary items not swept: No such file or directory"));
}

TEST_F(TemporaryItemsTest, DoesNotWaitForEverForOneThatIsAlone)
{
    const Other other([&](const auto& stay) {
        const FileDescriptor held = createPrivateFile(folder / lockName);
        flock(held.get(), LOCK_EX);
        stay();
    });
    const testing::CapturedLog log;
    put(std::string(".incomplete-") + aUUID);
    {
        const auto own = items();
    }
    EXPECT_EQ(folder.names().size(), 2U);
    EXPECT_EQ(log.lines().size(), 1U);
}

/// Another process might otherwise sweep them while they are in use.
TEST_F(TemporaryItemsTest, MakesNoItemsWhileItCannotShareTheLock)
{
    const testing::TemporaryFolder home;
    const testing::ScopedEnvironment temporary("TMPDIR", folder.path().native());
    const testing::MessagesFixture history(home / "chat.db");
    const fs::path archive = folder / (std::string("vorn-nimbrel-") + aUUID + ".zip");
    Other alone([&](const auto& stay) {
        const FileDescriptor held = createPrivateFile(folder / lockName);
        flock(held.get(), LOCK_EX);
        stay();
    });
    const testing::CapturedLog log;
    const auto own = items();
    EXPECT_THROW(MessagesSnapshot::take(history.path(), own->files()), fs::filesystem_error);
    EXPECT_THROW(own->files().writeAtomically(bytesOf("archive"), archive), fs::filesystem_error);
    own->files().writeAtomically(bytesOf("text"), home / "elsewhere"); // no sweep looks there
    EXPECT_THAT(folder.names(), ElementsAre(lockName));

    alone.endNormally();
    const MessagesSnapshot snapshot = MessagesSnapshot::take(history.path(), own->files());
    const auto later = items();
    EXPECT_TRUE(fs::exists(snapshot.databaseURL())) << "the lock is shared since";
}

/// Programs that clean up temporary files may remove the lock file.
TEST_F(TemporaryItemsTest, SharesTheLockAgainBeforeAnItemWhereItWasTakenAway)
{
    const fs::path archive = folder / (std::string("vorn-nimbrel-") + aUUID + ".zip");
    const auto own = items();
    fs::remove(folder / lockName);
    own->files().writeAtomically(bytesOf("archive"), archive);
    const auto later = items();
    EXPECT_TRUE(fs::exists(archive));
}

TEST_F(TemporaryItemsTest, WorksUnderAMaskThatTakesEverything)
{
    const mode_t mask = umask(0777);
    auto own = items();
    umask(mask);
    put(std::string(".incomplete-") + aUUID);
    own.reset();
    EXPECT_THAT(folder.names(), IsEmpty());
}

/// Programs that clean up temporary files may remove the lock file.
TEST_F(TemporaryItemsTest, SweepsNothingAtTheEndWhenTheLockWasTakenAway)
{
    auto first = items();
    fs::remove(folder / lockName);
    const Other other([&](const auto& stay) {
        const auto own = items();
        put(std::string(".incomplete-") + aUUID);
        stay();
    });
    first.reset();
    EXPECT_THAT(folder.names(), ElementsAre(std::string(".incomplete-") + aUUID, lockName));
}

} // namespace
} // namespace vorn
