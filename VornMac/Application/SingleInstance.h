#pragma once

#include "Platform/Async/MainContext.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/Log.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace vorn {

/// Keeps one user from running the application twice: a second start asks the first to come to the front, and ends.
/// Holds nothing that outlives a killed process. From now on this process ignores SIGPIPE.
/// Threads: the context's own. Let it go as soon as the application begins to quit, and before its context: who starts
/// it anew at that time is then not sent away by one that is about to end.
class SingleInstance {
public:
    enum class Start {
        first,  ///< also where nobody can tell, which is logged: better twice than never
        told,   ///< another one runs, and has come to the front
        silent, ///< another one runs, and did not answer in time
    };

    /// What tells one application from others, and how long a second start waits for the first.
    struct Rendezvous {
        std::string name; ///< the application's bundle identifier, as a part of file names
        std::chrono::milliseconds patience = std::chrono::seconds(1);
    };

    /// `onSecondStart` is posted to `context`; the second start is answered when it returns. It may let go of this
    /// object.
    SingleInstance(MainContext& context, std::function<void()> onSecondStart, const Rendezvous& rendezvous,
                   const Log& log);
    ~SingleInstance();
    SingleInstance(SingleInstance&&) = delete;

    Start start() const noexcept { return start_; }

private:
    Start meet(const std::filesystem::path& folder, const Rendezvous& rendezvous);
    bool takeLock(const std::filesystem::path& path);
    void listen(const std::filesystem::path& path);
    void answerUntilTheEnd();
    void pass(std::shared_ptr<FileDescriptor> connection);

    MainContext& context_;
    std::shared_ptr<std::function<void()>> onSecondStart_;
    FileDescriptor lock_{-1}; ///< held while this one is the first
    FileDescriptor listener_{-1};
    FileDescriptor endIn_{-1}, endOut_{-1}; ///< a pipe; closing the first wakes the thread for its end
    std::filesystem::path socket_;
    Start start_ = Start::first;
    std::thread thread_;
};

} // namespace vorn
