#include "VornMac/View/Everything.h"

#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <QQuickItem>
#include <unistd.h>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

constexpr int rounds = 7;
constexpr auto rest = 400ms;

/// What of the process is in memory, in MiB, as every system's ps tells it.
double residentMiB()
{
    const std::string command = "ps -o rss= -p " + std::to_string(getpid());
    std::FILE* ps = popen(command.c_str(), "r");
    double kilobytes = 0;
    if (ps != nullptr && std::fscanf(ps, "%lf", &kilobytes) != 1) kilobytes = 0;
    if (ps != nullptr) pclose(ps);
    return kilobytes / 1024;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void print(const std::string& name, double value, const char* unit, const char* limit)
{
    std::printf("%-34s %10.2f %-6s %s\n", name.c_str(), value, unit, limit);
    std::fflush(stdout);
}

class PageBench {
public:
    explicit PageBench(const std::filesystem::path& history) : bench_({.history = history})
    {
        bench_.runUntilFound();
        TimedApplication::runFor(rest);
        std::printf("%zu messages\n", bench_.model().exportResult()->messages.size());
    }

    void measureOpening()
    {
        const double before = residentMiB();
        std::vector<double> opened;
        for (int round = 0; round < rounds; ++round) {
            if (round > 0) close();
            opened.push_back(painted([this] { page().open(); }));
        }
        print("opened and painted, median", median(opened), "ms", "the same for any size");
        print("opened and painted, first", opened.front(), "ms", "the same for any size");
        print("memory for it", residentMiB() - before, "MiB", "the same for any size");
    }

    /// Scrolls a little with every frame, then to places all over the list.
    void measureScrolling()
    {
        QQuickItem& list = *bench_.window().findChild<QQuickItem*>("everything");
        FrameWatch watch(bench_.window());
        TimedApplication::shared().takeLongestTurn();
        for (int step = 0; step < 120; ++step) {
            painted([&list, step] { list.setProperty("contentY", 60.0 * step); });
        }
        printFrames("scrolled by hand", watch.take());
        for (int step = 0; step < 60; ++step) {
            painted([&list, step] {
                QMetaObject::invokeMethod(&list, "jumpTo", Q_ARG(double, ((step * 37) % 60) / 61.0));
            });
        }
        printFrames("jumped all over", watch.take());
    }

    void measureSearching()
    {
        for (const char* words : {"tram", "a", "nobody writes this"}) {
            const double before = residentMiB();
            TimedApplication::shared().takeLongestTurn();
            const auto begin = Steady::now();
            TimedApplication::inTurn([this, words] { page().setWords(words); });
            TimedApplication::runUntil([this] { return page().messages()->isSearch() || isDone(); });
            const double first = milliseconds(Steady::now() - begin);
            TimedApplication::runUntil([this] { return isDone(); });
            const std::string name = std::string("\"") + words + "\", ";
            print(name + "first", first, "ms", "");
            print(name + "all " + std::to_string(page().messages()->count()), milliseconds(Steady::now() - begin), "ms",
                  "");
            print(name + "longest turn", TimedApplication::shared().takeLongestTurn(), "ms", "8 ms");
            print(name + "memory", residentMiB() - before, "MiB", "4 bytes a message found");
            TimedApplication::inTurn([this] { page().setWords(""); });
            TimedApplication::runFor(rest);
        }
    }

private:
    Everything& page() { return *bench_.screenModel().everything(); }
    bool isDone() { return page().messages()->isComplete() && !page().words().isEmpty(); }

    void close()
    {
        TimedApplication::inTurn([this] { page().close(); });
        TimedApplication::runFor(rest);
    }

    /// Milliseconds from the turn that does `work` to the end of the frame that shows it.
    double painted(const std::function<void()>& work)
    {
        const FrameWatch watch(bench_.window());
        Steady::time_point begin;
        TimedApplication::inTurn([&] {
            begin = Steady::now();
            work();
        });
        TimedApplication::runUntil([&watch] { return watch.count() > 0; });
        return milliseconds(watch.last() - begin);
    }

    static void printFrames(const std::string& name, std::vector<double> frames)
    {
        print(name + ", median", median(frames), "ms", "8 ms a frame");
        print(name + ", longest", std::ranges::max(frames), "ms", "8 ms a frame");
        print(name + ", longest turn", TimedApplication::shared().takeLongestTurn(), "ms", "");
    }

    BenchWindow bench_;
};

} // namespace

void measureEverything(const std::filesystem::path& history)
{
    PageBench page(history);
    page.measureOpening();
    page.measureScrolling();
    page.measureSearching();
}

} // namespace vorn::bench
