#pragma once

#include "Platform/Async/BackgroundExecutor.h"

namespace vorn {

/// A thread for each piece of work, which nobody waits for: where work may wait for a person, the program's end must
/// not wait with it. Work must own all that it uses, and may be cut off by that end.
class DetachedThreads final : public BackgroundExecutor {
public:
    /// Throws `std::system_error` when there can be no more threads.
    void post(std::function<void()> work) override;
};

} // namespace vorn
