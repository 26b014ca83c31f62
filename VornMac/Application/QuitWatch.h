#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/Base/InterruptWatch.h"

#include <functional>
#include <mutex>

namespace vorn {

/// Makes SIGTERM, SIGINT and SIGHUP quit the application as its user would. 5 seconds after the first signal, or on the
/// second, it ends the process at once; the next start removes what remains in the temporary directory. Construct it in
/// `main` before any thread starts: threads must inherit the blocked signals.
class QuitWatch {
public:
    QuitWatch();
    QuitWatch(QuitWatch&&) = delete;

    /// The exit status that a shell reports for a program ended by the signal; 0 if none came.
    int exitStatus() const noexcept { return watch_.cancelFlag().isCancelled() ? watch_.exitStatus() : 0; }

    /// While it lives, the first signal posts `onQuit` to the context, once; a signal that has already come posts it at
    /// construction. The context must outlive this object.
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

    std::mutex mutex_; ///< guards the members below, except the watch
    bool signalled_ = false;
    Delivery* delivery_ = nullptr;
    InterruptWatch watch_; ///< last: its thread uses the others
};

} // namespace vorn
