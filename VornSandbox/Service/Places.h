#pragma once

#include <atomic>
#include <memory>

namespace vorn::sandbox {

/// Counts in how many places something is going on, up to a limit. Threads: any.
class Places {
public:
    explicit Places(int most) : free_(most) {}

    /// Held as long as the result lives; empty when all are taken.
    std::shared_ptr<void> take()
    {
        if (free_.fetch_sub(1) <= 0) {
            ++free_;
            return nullptr;
        }
        return {this, [](void* self) { ++static_cast<Places*>(self)->free_; }};
    }

private:
    std::atomic<int> free_;
};

} // namespace vorn::sandbox
