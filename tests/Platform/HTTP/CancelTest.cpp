#include "Platform/Base/CancelFlag.h"
#include "tests/Platform/HTTP/FullPort.h"
#include "tests/Platform/HTTP/SessionFixture.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t part = 8 * 1024 * 1024;

/// The outcome of a request that runs beside the test.
enum class Outcome { none, answered, cancelled, failed };

class Cancelling : public SessionFixture {
protected:
    Task begin(HTTPRequest asked) { return {context, follow(session->send(std::move(asked)), outcome)}; }

    void cancel(Task& task)
    {
        task.cancel();
        context.runUntil([&] { return !task.isRunning(); });
    }

    /// Runs the coroutine as far as it gets, waits in `condition` for the server, and runs the coroutine again.
    void runUntil(const std::function<bool()>& condition)
    {
        context.runPending();
        EXPECT_TRUE(condition());
        context.runPending();
    }

    static Async<> follow(Async<HTTPResponse> answer, std::shared_ptr<Outcome> outcome)
    {
        try {
            co_await std::move(answer);
            *outcome = Outcome::answered;
        } catch (const Cancelled&) {
            *outcome = Outcome::cancelled;
            throw;
        } catch (const URLError&) {
            *outcome = Outcome::failed;
        }
    }

    std::shared_ptr<Outcome> outcome = std::make_shared<Outcome>(Outcome::none);
};

TEST_F(Cancelling, BeforeTheStartSendsNothing)
{
    Task task = begin(put(part));
    cancel(task);
    EXPECT_EQ(*outcome, Outcome::none);
    server.answer({});
    send(get()); // the session's thread has handled everything sent before
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(Cancelling, WhileConnectingEndsAtOnce)
{
    const FullPort full;
    Task task = begin(request(Method::get, full.url()));
    context.runPending();
    server.answer({});
    send(get()); // the session's thread has begun to connect before it came to this
    ASSERT_EQ(*outcome, Outcome::none);
    cancel(task);
    EXPECT_EQ(*outcome, Outcome::cancelled);
}

TEST_F(Cancelling, WhileSendingCutsTheConnection)
{
    server.script([](Exchange& exchange) {
        exchange.readBody(part / 2);
        exchange.stayUntilClosed();
    });
    Task task = begin(put(part));
    runUntil([&] { return server.waitForBodyBytes(part / 2); });
    cancel(task);
    EXPECT_EQ(*outcome, Outcome::cancelled);
    EXPECT_TRUE(server.waitUntilAllClosed()) << "before the time limit, which is longer than this waits";
}

TEST_F(Cancelling, WhileReceivingCutsTheConnection)
{
    std::promise<void> halfSent;
    server.script([&halfSent](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 16000000\r\n\r\n");
        for (int i = 0; i < 150; ++i) exchange.send(std::string(100'000, 'x')); // more than the system's buffers hold
        halfSent.set_value();
        exchange.stayUntilClosed();
    });
    Task task = begin(get());
    context.runPending();
    halfSent.get_future().wait();
    cancel(task);
    EXPECT_EQ(*outcome, Outcome::cancelled);
    EXPECT_TRUE(server.waitUntilAllClosed());
}

TEST_F(Cancelling, CountsAlsoWhenTheAnswerIsOnItsWay)
{
    // The answer has been posted to the coroutine's queue, but not run.
    std::atomic<int> posted = 0;
    MainContext queue([&posted] { ++posted; });
    server.answer({});
    Task task(queue, follow(session->send(put(1)), outcome));
    queue.runPending();
    while (posted < 2) std::this_thread::yield(); // the first was the task's own
    task.cancel();
    queue.runUntil([&] { return !task.isRunning(); });
    EXPECT_EQ(*outcome, Outcome::cancelled);
}

TEST_F(Cancelling, EndsProgressBeforeItReturns)
{
    for (int time = 0; time < 50; ++time) {
        // Counted on the session's thread, read on this one: nothing may be counted once the task has ended.
        auto count = std::make_shared<std::atomic<int>>(0);
        auto asked = put(part);
        asked.onBodyProgress = [count](std::int64_t) { ++*count; };
        server.script([](Exchange& exchange) {
            exchange.readWholeBody();
            exchange.stayUntilClosed(); // an answered connection would stay open for the next request
        });
        Task task = begin(asked);
        context.runPending();
        while (*count == 0) std::this_thread::yield();
        cancel(task);
        const int seen = *count;
        EXPECT_TRUE(server.waitUntilAllClosed());
        EXPECT_EQ(*count, seen);
    }
}

TEST_F(Cancelling, LeavesOtherRequestsAlone)
{
    server.script([](Exchange& exchange) { exchange.stayUntilClosed(); });
    Task first = begin(get("/first"));
    runUntil([&] { return server.waitForRequests(1); });
    std::atomic<bool> firstEnded = false;
    server.script([&](Exchange& exchange) {
        while (!firstEnded) exchange.pause(1ms);
        exchange.answer({.body = "second"});
    });
    context.post([&] {
        first.cancel();
        firstEnded = true;
    });
    EXPECT_EQ(send(get("/second")).body, "second");
}

TEST_F(Cancelling, TheWholeSessionEndsEverythingUnderWay)
{
    for (int i = 0; i < 3; ++i) server.script([](Exchange& exchange) { exchange.stayUntilClosed(); });
    std::vector<Task> tasks;
    tasks.reserve(3);
    for (int i = 0; i < 3; ++i) tasks.push_back(begin(put(part)));
    runUntil([&] { return server.waitForRequests(3); });
    auto notBegun = session->send(get());

    session.reset();
    EXPECT_THROW(context.run(std::move(notBegun)), Cancelled);
    context.runUntil([&] { return context.runningTasks() == 0; });
    EXPECT_EQ(*outcome, Outcome::cancelled);
    EXPECT_TRUE(server.waitUntilAllClosed());
    EXPECT_EQ(server.requests().size(), 3U);
}

/// A callback may own the session.
TEST_F(Cancelling, TheSessionMayDieOnItsOwnThread)
{
    server.script([](Exchange& exchange) { exchange.stayUntilClosed(); });
    Task other = begin(get("/other"));
    runUntil([&] { return server.waitForRequests(1); });
    const std::weak_ptr<HTTPSession> watched = session;
    server.answer({.body = "answered"});
    auto asked = put(1);
    asked.onBodyProgress = [held = session](std::int64_t) {};
    auto answer = session->send(std::move(asked));
    session.reset();

    EXPECT_EQ(context.run(std::move(answer)).body, "answered");
    context.runUntil([&] { return !other.isRunning(); });
    EXPECT_EQ(*outcome, Outcome::cancelled);
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(server.waitUntilAllClosed());
}

TEST_F(Cancelling, TheContextWhileSendingLeavesNothingBehind)
{
    server.script([](Exchange& exchange) { exchange.stayUntilClosed(); });
    const Task task = begin(put(part));
    runUntil([&] { return server.waitForRequests(1); });
    context.shutDown();
    EXPECT_EQ(*outcome, Outcome::cancelled);
    EXPECT_TRUE(server.waitUntilAllClosed());
}

std::size_t openFiles()
{
    const std::filesystem::directory_iterator all("/dev/fd"); // this process's own
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

TEST(SessionFiles, AreAllClosedAtTheEnd)
{
    { // files that libraries open once and keep
        LoopbackServer server;
        server.answer({});
        MainContext context;
        context.run(HTTPSession::make()->send({.url = urlOf(server.url())}));
    }
    const auto before = openFiles();
    {
        LoopbackServer server;
        MainContext context;
        const auto session = HTTPSession::make();
        for (int i = 0; i < 20; ++i) {
            server.script([i](Exchange& exchange) {
                if (i % 3 == 0) exchange.reset();
                if (i % 3 == 1) exchange.answer({.status = 403});
                if (i % 3 == 2) exchange.stayUntilClosed();
            });
            HTTPRequest asked{.method = HTTPRequest::Method::put, .url = urlOf(server.url()), .body = bodyOf(100000)};
            asked.inactivityLimit = 30ms;
            try {
                context.run(session->send(asked));
            } catch (const URLError&) { // NOLINT(bugprone-empty-catch): two of three are meant to fail
            }
        }
    }
    EXPECT_EQ(openFiles(), before);
}

} // namespace
} // namespace vorn::testing
