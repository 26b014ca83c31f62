#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/Base/InterruptWatch.h"

#include <functional>
#include <mutex>

namespace vorn {

/// Lets SIGTERM, SIGINT and SIGHUP quit the application as its user would. One that has not ended 5 seconds after the
/// first, or when another one comes, is ended on the spot: what it leaves in the temporary directory, the next start
/// removes. Make it in `main` before anything else: every later thread must inherit that these signals are blocked.
class QuitWatch {
public:
    QuitWatch();
    QuitWatch(QuitWatch&&) = delete;

    /// The exit status of a program that a signal has ended, as shells count; 0 when none came.
    int exitStatus() const noexcept { return watch_.cancelFlag().isCancelled() ? watch_.exitStatus() : 0; }

    /// While it lives, the first signal posts `onQuit` to a context, once; at once when it has come before. Ends before
    /// the context does.
    class Delivery {
    public:
        Delivery(QuitWatch& watch, MainContext& context, std::function<void()> onQuit);
        ~Delivery();
        Delivery(Delivery&&) = delete;

    private:
        friend QuitWatch;
        void deliver() { context_.post(onQuit_); }

        QuitWatch& watch_;
        MainContext& context_;
        std::function<void()> onQuit_;
    };

private:
    void onSignal();

    std::mutex mutex_; ///< guards what follows but the watch
    bool signalled_ = false;
    Delivery* delivery_ = nullptr;
    InterruptWatch watch_; ///< the last: its thread uses the others
};

} // namespace vorn
