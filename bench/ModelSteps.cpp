// What the application model costs around a scan: how long the main thread is held up, how soon an interrupted scan
// ends, and how much memory the result keeps. Prints the figures for docs/performance.md.
#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>

#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

/// A service that answers every request at once, with the quest.
class QuestService final : public HTTPSession {
public:
    explicit QuestService(std::string handle) : handle_(std::move(handle)) {}

    Async<HTTPResponse> send(HTTPRequest /*request*/) override
    {
        co_return HTTPResponse{200,
                               {},
                               R"({"quest":{"id":"quest-1","status":"available"},"handles":[")" + handle_ +
                                   R"("],"maxBytes":9000000000})"};
    }

private:
    std::string handle_;
};

class NoDefaults final : public UserDefaults {
public:
    std::optional<std::string> text(const std::string& /*key*/) const override { return std::nullopt; }
    bool boolean(const std::string& /*key*/) const override { return true; }
    void setBoolean(const std::string& /*key*/, bool /*value*/) override {}
    void setText(const std::string& /*key*/, const std::string& /*value*/) override {}
};

class NoWorkspace final : public Workspace {
public:
    bool open(const std::string& /*url*/) override { return false; }
    void revealApplication() override {}
    void relaunch() override {}
};

/// Measures how long each turn of the main thread takes.
class Heartbeat {
public:
    MainContext& context() { return context_; }

    void runUntil(const std::function<bool()>& done)
    {
        while (!done()) {
            std::unique_lock lock(mutex_);
            woken_.wait_for(lock, 1ms, [this] { return awake_; });
            awake_ = false;
            lock.unlock();
            const auto begin = Steady::now();
            context_.runPending();
            longest_ = std::max(longest_, Steady::now() - begin);
        }
    }
    double longestMilliseconds() const { return std::chrono::duration<double, std::milli>(longest_).count(); }

    /// Measures work that the benchmark does on the main thread itself.
    void measure(const std::function<void()>& turn)
    {
        const auto begin = Steady::now();
        turn();
        longest_ = std::max(longest_, Steady::now() - begin);
    }

private:
    std::mutex mutex_; ///< guards awake_
    std::condition_variable woken_;
    bool awake_ = false;
    Steady::duration longest_{};
    MainContext context_{[this] {
        const std::lock_guard lock(mutex_);
        awake_ = true;
        woken_.notify_one();
    }};
};

/// The process's resident memory in bytes; 0 where the system does not say.
double residentBytes()
{
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    file >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// One application, run from its start.
struct Application {
    Application(const std::string& database, const std::string& handle)
        : http(std::make_shared<QuestService>(handle)),
          model({.context = &heart.context(),
                 .clock = &clock,
                 .background = &pool,
                 .api = VornAPI({APIConfiguration::productionBaseURL()}, http, tokens),
                 .tokens = tokens,
                 .transfer = http,
                 .defaults = &defaults,
                 .workspace = &workspace,
                 .files = &FileManager::standard(),
                 .messagesDatabase = database,
                 .bundle = Bundle({})})
    {
    }

    bool isFound() const { return std::holds_alternative<phase::Found>(model.scanPhase()); }

    SystemClock clock;
    BackgroundPool pool;
    Heartbeat heart;
    std::shared_ptr<TokenStore> tokens = std::make_shared<InMemoryTokenStore>(StoredSession("t", "r", "user", "Ada"));
    std::shared_ptr<HTTPSession> http;
    NoDefaults defaults;
    NoWorkspace workspace;
    AppModel model;
};

/// Seconds that an application takes to end when it is closed `after` the scan's beginning.
double secondsToClose(const std::string& database, const std::string& handle, std::chrono::milliseconds after)
{
    Application app(database, handle);
    app.model.start();
    const auto begin = Steady::now();
    app.heart.runUntil([&] { return Steady::now() - begin >= after; });
    const auto closed = Steady::now();
    app.heart.context().shutDown();
    return std::chrono::duration<double>(Steady::now() - closed).count();
}

void printScan(const std::string& database, const std::string& handle)
{
    Application app(database, handle);
    const double before = residentBytes();
    app.heart.measure([&] { app.model.start(); });
    const auto begin = Steady::now();
    app.heart.runUntil([&] { return app.isFound(); });
    const double seconds = std::chrono::duration<double>(Steady::now() - begin).count();
    const auto messages = static_cast<double>(app.model.exportResult()->messages.size());
    std::printf("scan of %.0f messages: %.2f s; longest turn of the main thread %.3f ms (8 ms)\n", messages, seconds,
                app.heart.longestMilliseconds());
    std::printf("held between scan and upload: %.0f bytes a message (500)\n", (residentBytes() - before) / messages);
    app.heart.measure([&] { app.model.signOut(); });
    std::printf("longest turn of the main thread with the sign-out: %.3f ms (8 ms)\n", app.heart.longestMilliseconds());
    app.heart.context().shutDown(1s);
}

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("Usage: bench-model DATABASE HANDLE\n", stderr);
        return 2;
    }
    vorn::printScan(argv[1], argv[2]);
    double longest = 0;
    for (const int milliseconds : {50, 200, 400, 800, 1200, 1600, 2000, 2400, 3000})
        longest = std::max(longest, vorn::secondsToClose(argv[1], argv[2], std::chrono::milliseconds(milliseconds)));
    std::printf("closing during a scan, the longest of nine: %.3f s (1 s)\n", longest);
}
