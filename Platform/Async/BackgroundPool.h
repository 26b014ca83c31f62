#pragma once

#include "Platform/Async/BackgroundExecutor.h"

namespace vorn {

/// A few threads for work that blocks or computes for long.
class BackgroundPool final : public BackgroundExecutor {
public:
    explicit BackgroundPool(unsigned threads = 2);
    /// Waits for what is running; what has not begun is dropped.
    ~BackgroundPool() override;
    BackgroundPool(BackgroundPool&&) = delete;

    void post(std::function<void()> work) override;

private:
    struct Threads;
    std::unique_ptr<Threads> threads_;
};

} // namespace vorn
