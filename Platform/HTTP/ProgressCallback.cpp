#include "Platform/HTTP/ProgressCallback.h"

namespace vorn {

void ProgressCallback::tell(std::int64_t bytesSent) noexcept
{
    const std::lock_guard lock(mutex_);
    if (disconnected_ || !function_ || bytesSent <= told_) return;
    told_ = bytesSent;
    function_(bytesSent);
}

void ProgressCallback::disconnect() noexcept
{
    const std::lock_guard lock(mutex_);
    disconnected_ = true;
}

void ProgressCallback::destroy() noexcept
{
    disconnect();
    function_ = nullptr;
}

} // namespace vorn
