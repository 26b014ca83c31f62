#pragma once

#include "Platform/Base/Log.h"

#include <memory>
#include <string>
#include <vector>

namespace vorn::testing {

/// Keeps the lines that are logged while it lives, and passes them on to the previous sink. Threads: lines may come
/// from any; construct and destroy on one, the last constructed first destroyed.
class CapturedLog {
public:
    CapturedLog();
    ~CapturedLog();
    CapturedLog(CapturedLog&&) = delete;

    /// The lines so far, as "[category] line".
    std::vector<std::string> lines() const;

private:
    class Sink;
    std::shared_ptr<Sink> sink_;
};

} // namespace vorn::testing
