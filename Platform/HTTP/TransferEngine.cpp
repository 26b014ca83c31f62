#include "Platform/HTTP/TransferEngine.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/WipedMemory.h"

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace vorn {
namespace {

constexpr long idleConnections = 4;

/// What libcurl frees is wiped: headers with tokens, and answers.
CURLcode setUp()
{
    return curl_global_init_mem(CURL_GLOBAL_DEFAULT, &std::malloc, &memory::wipeAndFree, &memory::reallocateWiped,
                                &strdup, &std::calloc);
}

CURLM* newMulti()
{
    static const CURLcode ready = setUp();
    CURLM* const result = ready == CURLE_OK ? curl_multi_init() : nullptr;
    if (result == nullptr) fatalError("libcurl cannot be set up");
    return result;
}

/// Keeps signals off the session's thread, where a broken pipe must be an error, not SIGPIPE.
class SignalsBlocked {
public:
    SignalsBlocked() noexcept
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(SignalsBlocked&&) = delete;

private:
    sigset_t before_{};
};

} // namespace

TransferEngine::TransferEngine(HTTPSession::Options options) : options_(std::move(options)), multi_(newMulti())
{
    curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, idleConnections);
}

std::shared_ptr<TransferEngine> TransferEngine::start(HTTPSession::Options options)
{
    auto engine = std::make_shared<TransferEngine>(std::move(options));
    const SignalsBlocked inherited;
    engine->thread_ = std::thread([engine] { engine->run(); });
    return engine;
}

void TransferEngine::add(std::shared_ptr<Transfer> transfer)
{
    {
        const std::lock_guard lock(mutex_);
        if (!stopped_) arrivals_.push_back(std::exchange(transfer, nullptr));
    }
    if (transfer) {
        transfer->drop();
    } else {
        wake();
    }
}

void TransferEngine::wake() noexcept
{
    curl_multi_wakeup(multi_.get());
}

void TransferEngine::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    wake();
    if (thread_.get_id() == std::this_thread::get_id()) {
        thread_.detach(); // called from a callback that owned the last reference
    } else {
        thread_.join();
    }
}

void TransferEngine::run()
{
    while (takeArrivals()) {
        sockets_.moveRelays(); // input for libcurl
        int running = 0;
        curl_multi_perform(multi_.get(), &running);
        endFinished();
        resumeBodies();
        endAbandonedAndStalled();
        sockets_.moveRelays(); // its output
        auto& awaited = sockets_.awaitedByRelays();
        curl_multi_poll(multi_.get(), awaited.data(), static_cast<unsigned>(awaited.size()), millisecondsToWait(),
                        nullptr);
    }
    for (const auto& transfer : Transfers(underWay_)) remove(transfer.get())->drop();
}

/// Returns false once the engine is stopped.
bool TransferEngine::takeArrivals()
{
    Transfers arrived;
    bool stopped = false;
    {
        const std::lock_guard lock(mutex_);
        arrived = std::exchange(arrivals_, {});
        stopped = stopped_;
    }
    for (const auto& transfer : arrived) stopped ? transfer->drop() : begin(transfer);
    return !stopped;
}

void TransferEngine::begin(const std::shared_ptr<Transfer>& transfer)
{
    if (transfer->isAbandoned()) return transfer->drop();
    try {
        transfer->prepare(options_, sockets_);
    } catch (const URLError& error) {
        transfer->fail(error.code());
        return;
    }
    underWay_.push_back(transfer);
    curl_multi_add_handle(multi_.get(), transfer->handle());
}

void TransferEngine::endFinished()
{
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        Transfer* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        const CURLcode result = message->data.result; // removing the handle frees the message
        remove(transfer)->finish(result);
    }
}

/// Called after libcurl has run: its next run begins by reading what has arrived.
void TransferEngine::resumeBodies()
{
    for (const auto& transfer : underWay_) transfer->resumeBody();
}

void TransferEngine::endAbandonedAndStalled()
{
    const auto now = options_.now();
    for (const auto& transfer : Transfers(underWay_)) {
        const bool abandoned = transfer->isAbandoned();
        if (!abandoned && !transfer->isStalled(now)) continue;
        remove(transfer.get());
        abandoned ? transfer->drop() : transfer->fail(URLError::Code::timedOut);
    }
}

std::shared_ptr<Transfer> TransferEngine::remove(const Transfer* transfer)
{
    const auto at = std::find_if(underWay_.begin(), underWay_.end(),
                                 [transfer](const auto& candidate) { return candidate.get() == transfer; });
    auto result = *at;
    underWay_.erase(at);
    curl_multi_remove_handle(multi_.get(), result->handle());
    return result;
}

int TransferEngine::millisecondsToWait() const
{
    if (underWay_.empty()) return INT_MAX;
    auto next = underWay_.front()->nextLook();
    for (const auto& transfer : underWay_) next = std::min(next, transfer->nextLook());
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - options_.now());
    return static_cast<int>(std::clamp<std::int64_t>(wait.count(), 0, INT_MAX));
}

} // namespace vorn
