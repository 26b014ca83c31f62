#pragma once

#include "Platform/HTTP/HTTPSession.h"

#include <atomic>
#include <chrono>
#include <memory>

namespace vorn::testing {

/// An inactivity clock that only the test advances: a busy machine cannot make a transfer time out, and no test waits.
/// The session polls it often. Threads: any.
class HandClock {
public:
    HTTPSession::Options options() const
    {
        return {.now = [state = state_] {
            ++state->looks;
            return std::chrono::steady_clock::time_point(std::chrono::milliseconds(state->now));
        }};
    }
    void advance(std::chrono::milliseconds duration) { state_->now += duration.count(); }
    /// How often a session has read it.
    int looks() const { return state_->looks; }

private:
    struct State {
        std::atomic<std::int64_t> now = 0; ///< milliseconds
        std::atomic<int> looks = 0;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace vorn::testing
