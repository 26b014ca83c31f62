#pragma once

#include "Platform/Base/Owned.h"
#include "Platform/HTTP/OpenSockets.h"
#include "Platform/HTTP/Transfer.h"

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <curl/curl.h>

namespace vorn {

/// Runs all transfers of a session on one thread. Threads: `add`, `wake` and `stop` any; everything else that thread.
class TransferEngine {
public:
    /// Starts the thread, which keeps the engine alive until it is stopped.
    static std::shared_ptr<TransferEngine> start(HTTPSession::Options options);
    explicit TransferEngine(HTTPSession::Options options); ///< for `start`
    TransferEngine(TransferEngine&&) = delete;

    /// Begins `transfer`, or drops it if the engine is stopped.
    void add(std::shared_ptr<Transfer> transfer);
    /// Makes the thread look for abandoned transfers.
    void wake() noexcept;
    /// Drops every transfer and joins the thread, without waiting for name lookups. Call it once. Called on the thread
    /// itself, it returns before the thread has ended.
    void stop();

private:
    using Transfers = std::vector<std::shared_ptr<Transfer>>;

    void run();
    bool takeArrivals();
    void begin(const std::shared_ptr<Transfer>& transfer);
    void endFinished();
    void resumeBodies();
    void endAbandonedAndStalled();
    std::shared_ptr<Transfer> remove(const Transfer* transfer);
    int millisecondsToWait() const;

    HTTPSession::Options options_;
    OpenSockets sockets_; ///< outlives the connections
    Owned<CURLM, curl_multi_cleanup> multi_;
    Transfers underWay_;

    std::mutex mutex_; ///< guards the two below
    Transfers arrivals_;
    bool stopped_ = false;

    std::thread thread_;
};

} // namespace vorn
