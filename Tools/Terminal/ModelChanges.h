#pragma once

#include "Platform/Async/Suspend.h"
#include "VornMac/Model/AppModel.h"

#include <optional>

namespace vorn {

/// Waits for changes of a model. Threads: the model's own.
class ModelChanges : public QObject {
public:
    explicit ModelChanges(const AppModel& model);

    /// Ends with the next change, or at once if there was one since the last call ended. One call at a time.
    Async<> next();

    /// Whether the watch on the review has ended since the model went to its current step.
    bool hasReviewWatchEnded() const noexcept { return reviewWatchEnded_; }

private:
    void tell();

    bool changed_ = false;
    bool reviewWatchEnded_ = false;
    std::optional<Resume<void>> waiting_;
};

} // namespace vorn
