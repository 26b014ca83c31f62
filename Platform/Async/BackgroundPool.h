#pragma once

#include "Platform/Async/BackgroundExecutor.h"

namespace vorn {

/// Runs posted work on a few threads.
class BackgroundPool final : public BackgroundExecutor {
public:
    explicit BackgroundPool(unsigned threads = 2);
    /// Waits for running work; drops work that has not begun.
    ~BackgroundPool() override;
    BackgroundPool(BackgroundPool&&) = delete;

    void post(std::function<void()> work) override;

private:
    struct Threads;
    std::unique_ptr<Threads> threads_;
};

} // namespace vorn
