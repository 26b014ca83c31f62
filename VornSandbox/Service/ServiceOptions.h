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
    std::optional<std::filesystem::path> state; ///< a folder that outlives the run; absent: memory and temporary files

    /// Reads the arguments into `options`. If nothing is to be run, prints why and returns the exit code.
    static std::optional<int> parse(int argc, const char* const* argv, ServiceOptions& options);

    /// Calls `read` with all options and their help, which are destroyed when it returns.
    static void describe(const std::function<void(const CLI::App&)>& read);
};

} // namespace vorn::sandbox
