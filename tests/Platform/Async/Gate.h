#pragma once

#include "Platform/Async/Suspend.h"

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

/// Events in the order in which they happened.
using Journal = std::vector<std::string>;

/// An awaitable that the test answers by hand. Must outlive the tasks that wait on it.
template <class T = void>
struct Gate {
    std::vector<Resume<T>> resumes; ///< one for each wait
    int waits = 0;
    int stops = 0; ///< calls of the cancel action

    Async<T> wait(OnCancel onCancel = OnCancel::leave)
    {
        co_return co_await suspend<T>(
            [this](const Resume<T>& answer) -> CancelAction {
                ++waits;
                resumes.push_back(answer);
                return [this] { ++stops; };
            },
            onCancel);
    }

    /// Answers the latest wait.
    template <class... Value>
    void answer(Value&&... value) const
    {
        resumes.back()(std::forward<Value>(value)...);
    }
    void fail(std::exception_ptr error) const { resumes.back().fail(std::move(error)); }
};

/// Waits on `gate` and records the end of the wait.
inline Async<> waitAndTell(Gate<>* gate, Journal* journal, OnCancel onCancel = OnCancel::leave)
{
    journal->emplace_back("began");
    try {
        co_await gate->wait(onCancel);
        journal->emplace_back("answered");
    } catch (const Cancelled&) {
        journal->emplace_back("cancelled");
        throw;
    }
}

} // namespace vorn
