#include "VornMac/Application/SingleInstance.h"

#include "VornMac/Application/LocalSocket.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::StartsWith;
using Start = SingleInstance::Start;

struct SingleInstanceTest : ::testing::Test {
    testing::TemporaryFolder folder;
    testing::ScopedEnvironment variable{"XDG_RUNTIME_DIR", folder.path().native()};
    MainContext context;
    int asked = 0;

    std::unique_ptr<SingleInstance> first(std::chrono::milliseconds patience = 60s)
    {
        return std::make_unique<SingleInstance>(
            context, [this] { ++asked; }, SingleInstance::Rendezvous{"com.vorn.test", patience}, Log("test", "app"));
    }
    /// Starts another instance on another thread, as if in another process, while this thread's context runs.
    Start second()
    {
        bool ended = false;
        auto start = std::async(std::launch::async, [this, &ended] {
            MainContext own;
            const SingleInstance instance(own, [] {}, {"com.vorn.test", 60s}, Log("test", "app"));
            context.post([&ended] { ended = true; });
            return instance.start();
        });
        context.runUntil([&ended] { return ended; });
        return start.get();
    }
};

/// Another process that is the first instance, and never runs its context.
class OtherFirst {
public:
    OtherFirst()
    {
        std::array<int, 2> ready{};
        if (pipe(ready.data()) != 0) throw std::runtime_error("no pipe");
        process_ = fork();
        if (process_ == 0) {
            MainContext context;
            const SingleInstance instance(context, [] {}, {"com.vorn.test", 60s}, Log("test", "app"));
            if (instance.start() != Start::first || write(ready[1], "", 1) != 1) _exit(1);
            while (true) pause();
        }
        close(ready[1]);
        char letter = 0;
        if (read(ready[0], &letter, 1) != 1) throw std::runtime_error("the other process failed");
        close(ready[0]);
    }
    ~OtherFirst() { kill(); }
    OtherFirst(OtherFirst&&) = delete;

    void kill()
    {
        if (process_ < 0) return;
        ::kill(process_, SIGKILL);
        waitpid(std::exchange(process_, -1), nullptr, 0);
    }
    void stop() const
    {
        ::kill(process_, SIGSTOP);
        waitpid(process_, nullptr, WUNTRACED);
    }

private:
    pid_t process_ = -1;
};

TEST_F(SingleInstanceTest, ASecondStartBringsTheFirstToTheFront)
{
    const auto running = first();
    EXPECT_EQ(running->start(), Start::first);
    EXPECT_EQ(second(), Start::told);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(second(), Start::told);
    EXPECT_EQ(asked, 2);
}

TEST_F(SingleInstanceTest, OneAfterTheOtherIsTheFirst)
{
    EXPECT_EQ(first()->start(), Start::first);
    EXPECT_EQ(first()->start(), Start::first);
    EXPECT_THAT(folder.names(), ElementsAre("com.vorn.test.lock"));
}

TEST_F(SingleInstanceTest, ApplicationsOfOtherNamesDoNotMeet)
{
    const auto running = first();
    const SingleInstance other(context, [] {}, {"com.vorn.other", 60s}, Log("test", "app"));
    EXPECT_EQ(other.start(), Start::first);
}

TEST_F(SingleInstanceTest, AKilledOneLeavesNothingInTheWay)
{
    OtherFirst killed;
    killed.kill();
    ASSERT_EQ(folder.names().size(), 2U) << "its socket is still there";
    const auto running = first(0s);
    EXPECT_EQ(running->start(), Start::first);
    EXPECT_EQ(second(), Start::told);
}

/// As in containers, whose processes reuse process IDs and whose host has a new name each time.
TEST_F(SingleInstanceTest, AFileThatNobodyLocksIsNoLockWhateverItSays)
{
    for (const std::string host : {"other-host", ""}) {
        testing::writeFile(folder / "com.vorn.test.lock", std::to_string(getpid()) + "\nVornMac\n" + host + "\n");
        EXPECT_EQ(first(0s)->start(), Start::first);
    }
}

TEST_F(SingleInstanceTest, DoesNotWaitForASilentOne)
{
    const OtherFirst silent;
    EXPECT_EQ(first(50ms)->start(), Start::silent);
    silent.stop();
    EXPECT_EQ(first(50ms)->start(), Start::silent);
}

TEST_F(SingleInstanceTest, OneThatWaitsForOneThatIsKilledTakesItsPlace)
{
    OtherFirst silent;
    std::thread killer([&silent, this] {
        while (!std::filesystem::exists(folder / "com.vorn.test.socket")) sched_yield();
        silent.kill();
    });
    EXPECT_EQ(first()->start(), Start::first);
    killer.join();
}

/// As when an application relaunches itself.
TEST_F(SingleInstanceTest, OneThatBeganToQuitSendsNobodyAway)
{
    std::atomic<bool> arrived = false;
    MainContext quitting([&arrived] {
        arrived = true;
        arrived.notify_one();
    });
    std::optional<SingleInstance> running;
    running.emplace(
        quitting, [this] { ++asked; }, SingleInstance::Rendezvous{"com.vorn.test", 60s}, Log("test", "app"));
    auto start = std::async(std::launch::async, [] {
        MainContext own;
        return SingleInstance(own, [] {}, {"com.vorn.test", 60s}, Log("test", "app")).start();
    });
    arrived.wait(false);
    running.reset();
    quitting.runUntilIdle();
    EXPECT_EQ(start.get(), Start::first);
    EXPECT_EQ(asked, 0);
}

TEST_F(SingleInstanceTest, MayBeLetGoWhenAsked)
{
    std::unique_ptr<SingleInstance> running;
    running = std::make_unique<SingleInstance>(
        context, [&running] { running.reset(); }, SingleInstance::Rendezvous{"com.vorn.test", 60s}, Log("test", "app"));
    EXPECT_EQ(second(), Start::told);
    EXPECT_EQ(running, nullptr);
}

TEST_F(SingleInstanceTest, SurvivesASecondStartThatDoesNotWait)
{
    const auto running = first();
    connectTo(folder / "com.vorn.test.socket").reset();
    context.runUntil([this] { return asked == 1; });
    EXPECT_EQ(second(), Start::told);
}

TEST_F(SingleInstanceTest, ManyStartsAtOnceHaveOneFirst)
{
    constexpr int starts = 6;
    std::array<int, 2> results{};
    ASSERT_EQ(pipe(results.data()), 0);
    std::vector<pid_t> children;
    for (int each = 0; each < starts; ++each) {
        const pid_t child = fork();
        if (child == 0) {
            MainContext own;
            int told = 0;
            const SingleInstance instance(own, [&told] { ++told; }, {"com.vorn.test", 60s}, Log("test", "app"));
            if (instance.start() == Start::first) own.runUntil([&told] { return told == starts - 1; });
            const char result = instance.start() == Start::first ? 'f' : instance.start() == Start::told ? 't' : 's';
            _exit(write(results[1], &result, 1) == 1 ? 0 : 1);
        }
        children.push_back(child);
    }
    std::string got(starts, ' ');
    for (char& each : got) ASSERT_EQ(read(results[0], &each, 1), 1);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
    EXPECT_EQ(std::ranges::count(got, 'f'), 1) << got;
    EXPECT_EQ(std::ranges::count(got, 't'), starts - 1) << got;
}

TEST_F(SingleInstanceTest, RunsUnguardedWhereNobodyCanTell)
{
    const testing::CapturedLog log;
    const testing::ScopedEnvironment none("XDG_RUNTIME_DIR", "");
    const testing::ScopedEnvironment missing("TMPDIR", (folder / "missing").native());
    EXPECT_EQ(first()->start(), Start::first);
    EXPECT_THAT(log.lines(), ElementsAre("[app] single instance not guarded: No such file or directory"));
}

TEST_F(SingleInstanceTest, RunsUnguardedWhereThePathIsTooLongForASocket)
{
    const testing::CapturedLog log;
    const std::filesystem::path deep = folder / std::string(120, 'a');
    std::filesystem::create_directory(deep);
    std::filesystem::permissions(deep, std::filesystem::perms::owner_all);
    const testing::ScopedEnvironment runtime("XDG_RUNTIME_DIR", deep.native());
    EXPECT_EQ(first()->start(), Start::first);
    EXPECT_EQ(first()->start(), Start::first);
    EXPECT_THAT(log.lines(), ::testing::SizeIs(2));
    EXPECT_THAT(log.lines(), ::testing::Each(StartsWith("[app] single instance not guarded: ")));
}

} // namespace
} // namespace vorn
