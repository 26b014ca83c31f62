#pragma once

#include "VornSandbox/SampleHistory/SampleHistory.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace CLI {
class App;
}

namespace vorn {

/// The command line of `vorn-sample-history`.
struct SampleHistoryCommandLine {
    static constexpr int wrong = 2; ///< exit code

    std::filesystem::path output;
    SampleHistoryOptions options;
    bool json = false;

    /// Reads the arguments; an exit code, after printing why, when there is nothing more to do.
    static std::optional<int> parse(int argc, const char* const* argv, SampleHistoryCommandLine& line);

    /// Hands `read` all options with their help. It is gone once `read` returns.
    static void describe(const std::function<void(const CLI::App&)>& read);
};

} // namespace vorn
