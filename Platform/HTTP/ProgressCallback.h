#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>

namespace vorn {

/// Reports how many bytes of a body have been sent. Threads: the session's own, except for `disconnect`.
class ProgressCallback {
public:
    using Function = std::function<void(std::int64_t bytesSent)>;

    explicit ProgressCallback(Function function) : function_(std::move(function)) {}

    /// Calls the function when `bytesSent` has grown.
    void tell(std::int64_t bytesSent) noexcept;

    /// Waits for a call that is running; after this the function is never called. Threads: any.
    void disconnect() noexcept;
    bool isDisconnected() const noexcept { return disconnected_; }
    /// Disconnects and destroys the function.
    void destroy() noexcept;

private:
    Function function_;
    std::int64_t told_ = -1;
    std::mutex mutex_; ///< held while the function runs
    std::atomic<bool> disconnected_ = false;
};

} // namespace vorn
