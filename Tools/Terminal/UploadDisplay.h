#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "Tools/Support/ProgressLine.h"
#include "Tools/Terminal/Terminal.h"
#include "Tools/Terminal/UploadMeter.h"

#include <memory>
#include <mutex>
#include <optional>

namespace vorn {

/// Shows how an upload goes on: a line that changes on a terminal, else a line for each tenth. Threads: the context's
/// own; `report` any.
class UploadDisplay {
public:
    /// All of them must outlive it; the context drops what it is posted later.
    UploadDisplay(MainContext& context, const Clock& clock, const Terminal& terminal);
    ~UploadDisplay();
    UploadDisplay(UploadDisplay&&) = delete;

    /// Remembers the newest progress and has it shown soon on the context's thread.
    void report(const UploadProgress& progress);

    /// Removes the line that changes, so that other output can take its place.
    void clear() { line_.clear(); }

private:
    /// What reports and the context's thread share; outlives the display in the work it has posted.
    struct Inbox {
        std::mutex mutex; ///< guards the two below
        std::optional<UploadProgress> newest;
        UploadDisplay* display = nullptr; ///< null once the display is gone
    };
    void show(const UploadProgress& progress);

    MainContext& context_;
    const Clock& clock_;
    const Terminal& terminal_;
    ProgressLine line_;
    UploadMeter meter_;
    int toldTenths_ = 0;
    std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
};

} // namespace vorn
