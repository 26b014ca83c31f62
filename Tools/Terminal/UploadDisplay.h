#pragma once

#include "Platform/Async/Clock.h"
#include "Tools/Support/ProgressLine.h"
#include "Tools/Terminal/Terminal.h"
#include "Tools/Terminal/UploadMeter.h"

namespace vorn {

/// Shows an upload's progress: on a terminal as a line that changes, otherwise as a line for each tenth. Threads: one
/// at a time.
class UploadDisplay {
public:
    /// Both must outlive it.
    UploadDisplay(const Clock& clock, const Terminal& terminal);

    void show(const UploadProgress& progress);

    /// Removes the line that changes, so that other output can take its place.
    void clear() { line_.clear(); }

private:
    const Clock& clock_;
    const Terminal& terminal_;
    ProgressLine line_;
    UploadMeter meter_;
    int toldTenths_ = 0;
};

} // namespace vorn
