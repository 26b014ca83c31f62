#pragma once

#include "Platform/Async/BackgroundExecutor.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

namespace vorn::testing {

/// Background work that runs when the test says so, on the test's own thread. Threads: that one.
class ManualExecutor final : public BackgroundExecutor {
public:
    void post(std::function<void()> work) override { waiting_.push_back(std::move(work)); }

    std::size_t waiting() const { return waiting_.size(); }

    /// Runs waiting work, and what that posts. Returns whether there was any.
    bool run()
    {
        const bool any = !waiting_.empty();
        while (!waiting_.empty()) {
            const auto work = std::move(waiting_.front());
            waiting_.pop_front();
            work();
        }
        return any;
    }

private:
    std::deque<std::function<void()>> waiting_;
};

} // namespace vorn::testing
