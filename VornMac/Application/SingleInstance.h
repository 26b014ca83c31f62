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

/// Keeps a user from running the application twice: a second start asks the first instance to come to the front, and
/// ends. A killed process leaves nothing behind that would keep the next one from starting. From construction on, the
/// process ignores SIGPIPE. Threads: the context's. Destroy it as soon as the application begins to quit, and before
/// its context: a process that is about to end must not turn a new start away.
class SingleInstance {
public:
    enum class Start {
        first,  ///< or locking failed, which is logged: two instances are better than none
        told,   ///< another instance runs and has come to the front
        silent, ///< another instance runs and did not answer in time
    };

    /// How instances of one application find each other.
    struct Rendezvous {
        std::string name; ///< the bundle identifier, part of file names
        std::chrono::milliseconds patience = std::chrono::seconds(1);
    };

    /// `onSecondStart`, which may destroy this object, is posted to `context`; the second start is answered when it
    /// returns.
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
    FileDescriptor lock_{-1}; ///< held by the first instance
    FileDescriptor listener_{-1};
    FileDescriptor endIn_{-1}, endOut_{-1}; ///< a pipe; closing `endIn_` ends the thread
    std::filesystem::path socket_;
    Start start_ = Start::first;
    std::thread thread_;
};

} // namespace vorn
