#pragma once

#include <chrono>
#include <functional>

#include <QGuiApplication>

namespace vorn::bench {

/// An application that measures how long each turn of its main thread takes. Threads: the main one.
class TimedApplication final : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    static TimedApplication& shared() { return *static_cast<TimedApplication*>(instance()); }

    bool notify(QObject* receiver, QEvent* event) override;

    /// Runs the event loop.
    static void runFor(std::chrono::milliseconds time);
    /// Runs it until `done`, called after each turn, returns true. Throws after a minute.
    static void runUntil(const std::function<bool()>& done);
    /// Calls `work` in a turn of its own.
    static void inTurn(std::function<void()> work);

    /// The longest turn since the last call, in milliseconds.
    double takeLongestTurn();

private:
    int depth_ = 0; ///< nested deliveries of events
    std::chrono::steady_clock::duration longest_{};
};

} // namespace vorn::bench
