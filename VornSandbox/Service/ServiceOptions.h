#pragma once

#include "VornSandbox/Service/Faults.h"
#include "VornSandbox/Service/Settings.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vorn::sandbox {

/// The command line of the service.
struct ServiceOptions {
    int port = 8787; ///< 0: any free one
    Settings settings;
    std::vector<Fault> faults;
    std::optional<std::filesystem::path> state; ///< the folder that outlives the run; none: memory and temporary files

    /// Reads the arguments; an exit code, after printing why, when there is nothing to run.
    static std::optional<int> parse(int argc, const char* const* argv, ServiceOptions& options);

    /// Hands `read` all options with their help. It is gone once `read` returns.
    static void describe(const std::function<void(const CLI::App&)>& read);
};

} // namespace vorn::sandbox
