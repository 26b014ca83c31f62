#pragma once

#include "Platform/Async/BackgroundExecutor.h"

namespace vorn {

/// Runs each piece of work on a thread of its own that is never joined, so that the program can end while work still
/// waits for a person. Work must own all that it uses, and may be cut off when the program ends.
class DetachedThreads final : public BackgroundExecutor {
public:
    /// Throws `std::system_error` when no thread can be started.
    void post(std::function<void()> work) override;
};

} // namespace vorn
