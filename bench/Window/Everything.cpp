#include "VornMac/View/Everything.h"

#include "bench/Table.h"
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
constexpr double mebibyte = 1024 * 1024;

/// The process's resident memory in MiB, from ps, which every system has.
double residentMiB()
{
    const std::string command = "ps -o rss= -p " + std::to_string(getpid());
    std::FILE* ps = popen(command.c_str(), "r");
    double kilobytes = 0;
    if (ps != nullptr && std::fscanf(ps, "%lf", &kilobytes) != 1) kilobytes = 0;
    if (ps != nullptr) pclose(ps);
    return kilobytes / 1024;
}

/// The cost of opening the page.
struct Opening {
    std::size_t messages = 0;
    std::vector<double> painted; ///< milliseconds
    double mebibytes = 0;
};

class PageBench {
public:
    explicit PageBench(const std::filesystem::path& history) : bench_({.history = history})
    {
        bench_.runUntilFound();
        TimedApplication::runFor(rest);
    }

    Opening measureOpening()
    {
        const double before = residentMiB();
        Opening opening;
        opening.messages = bench_.model().exportResult()->messages.size();
        for (int round = 0; round < rounds; ++round) {
            if (round > 0) close();
            opening.painted.push_back(painted([this] { page().open(); }));
        }
        opening.mebibytes = residentMiB() - before;
        return opening;
    }

    /// Scrolls a little with every frame, then jumps to places all over the list.
    void measureScrolling(Table& table)
    {
        QQuickItem& list = *bench_.window().findChild<QQuickItem*>("everything");
        FrameWatch watch(bench_.window());
        TimedApplication::shared().takeLongestTurn();
        for (int step = 0; step < 120; ++step) {
            painted([&list, step] { list.setProperty("contentY", 60.0 * step); });
        }
        addFrames(table, "scrolled by hand", wallTimes(watch.take()));
        for (int step = 0; step < 60; ++step) {
            painted([&list, step] {
                QMetaObject::invokeMethod(&list, "jumpTo", Q_ARG(double, ((step * 37) % 60) / 61.0));
            });
        }
        addFrames(table, "jumped all over", wallTimes(watch.take()));
    }

    void measureSearching(Table& table)
    {
        for (const char* words : {"tram", "a", "nobody writes this"}) {
            const double before = residentMiB();
            TimedApplication::shared().takeLongestTurn();
            const auto begin = Steady::now();
            TimedApplication::inTurn([this, words] { page().setWords(words); });
            TimedApplication::runUntil([this] { return page().messages()->isSearch() || isDone(); });
            const double first = milliseconds(Steady::now() - begin);
            TimedApplication::runUntil([this] { return isDone(); });
            const double all = milliseconds(Steady::now() - begin);
            const auto found = page().messages()->count();
            const std::string name = "search for \"" + std::string(words) + "\", " + std::to_string(found) + " found";
            table.add(name + ": the first, all", {figure(first, "ms"), figure(all, "ms")});
            const double turn = TimedApplication::shared().takeLongestTurn();
            table.add(name + ": longest turn", {figure(turn, "ms"), ""}, {turn, 8, "8 ms"});
            const double memory = residentMiB() - before;
            table.add(name + ": memory", {figure(memory, "MiB"), ""},
                      {memory, 4.0 * static_cast<double>(found) / mebibyte + 1, "4 bytes a message found + 1 MiB"});
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

    static void addFrames(Table& table, const std::string& name, const std::vector<double>& frames)
    {
        const double longest = std::ranges::max(frames);
        table.add(name + ", a frame", {figure(median(frames), "ms"), figure(longest, "ms")}, {longest, 8, "8 ms"});
        table.add(name + ", longest turn", {"", figure(TimedApplication::shared().takeLongestTurn(), "ms")});
    }

    BenchWindow bench_;
};

} // namespace

bool measureEverything(const std::filesystem::path& small, const std::filesystem::path& history)
{
    const Opening few = PageBench(small).measureOpening();
    PageBench page(history);
    const Opening many = page.measureOpening();
    Table table("The page with every message", {"Median", "Longest"});
    const auto times = [](const Opening& opening) -> std::vector<std::string> {
        return {figure(median(opening.painted), "ms"), figure(std::ranges::max(opening.painted), "ms")};
    };
    table.add("opened with " + std::to_string(few.messages), times(few));
    table.add("opened with " + std::to_string(many.messages), times(many),
              {median(many.painted), 1.25 * median(few.painted), "1.25 × the few"});
    table.add("memory for it", {figure(many.mebibytes, "MiB"), ""}, {many.mebibytes, 8, "8 MiB"});
    page.measureScrolling(table);
    page.measureSearching(table);
    return table.isReached();
}

} // namespace vorn::bench
