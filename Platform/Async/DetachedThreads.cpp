#include "Platform/Async/DetachedThreads.h"

#include <thread>
#include <utility>

namespace vorn {

void DetachedThreads::post(std::function<void()> work)
{
    std::thread(std::move(work)).detach();
}

} // namespace vorn
