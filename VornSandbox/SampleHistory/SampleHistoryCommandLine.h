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
    static constexpr int wrong = 2; ///< exit code for wrong arguments

    std::filesystem::path output;
    SampleHistoryOptions options;
    bool json = false;

    /// Reads the arguments into `line`. If nothing is to be run, prints why and returns the exit code.
    static std::optional<int> parse(int argc, const char* const* argv, SampleHistoryCommandLine& line);

    /// Calls `read` with all options and their help, which are destroyed when it returns.
    static void describe(const std::function<void(const CLI::App&)>& read);
};

} // namespace vorn
