#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>

namespace vorn {

/// Who is told how many bytes of a body have left. Threads: the session's own, but for `disconnect`.
class ProgressCallback {
public:
    using Function = std::function<void(std::int64_t bytesSent)>;

    explicit ProgressCallback(Function function) : function_(std::move(function)) {}

    /// Calls the function when `bytesSent` has grown.
    void tell(std::int64_t bytesSent) noexcept;

    /// The function is not called once this returns, which takes as long as a call that is running. Any thread.
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
