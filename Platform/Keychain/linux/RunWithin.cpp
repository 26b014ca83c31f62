#include "Platform/Keychain/linux/RunWithin.h"

#include <future>
#include <thread>
#include <utility>

namespace vorn {

bool runWithin(std::chrono::steady_clock::duration limit, std::function<void()> work)
{
    std::promise<void> ended;
    const std::future<void> end = ended.get_future();
    std::thread worker([work = std::move(work), ended = std::move(ended)]() mutable {
        work();
        work = nullptr; // destroys what it owns before the caller continues
        ended.set_value();
    });
    const bool inTime = end.wait_for(limit) == std::future_status::ready;
    if (inTime)
        worker.join();
    else
        worker.detach();
    return inTime;
}

} // namespace vorn
