#pragma once

#include "Platform/Base/Dates.h"

#include <filesystem>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace CLI {
class App;
}

namespace vorn {

/// The options of `vorn-export`.
struct ExportOptions {
    std::filesystem::path database; ///< empty if the user has no home folder and named no database
    bool isUsersOwn = true;         ///< `database` was not named
    std::vector<std::string> handles;
    std::filesystem::path output;
    Instant exportedAt;
    bool json = false;       ///< prints the statistics as JSON
    bool allowEmpty = false; ///< writes an archive even if it would be empty
};

/// What to print instead of exporting: the help, the version, or the mistake in the arguments.
struct ExportOptionsEnd {
    std::string text;
    bool isMistake = false;
};

/// Reads the command line. `now` is the default time of the export.
std::variant<ExportOptions, ExportOptionsEnd> parseExportOptions(int argc, const char* const* argv, Instant now);

/// Calls `read` with all options and their help, which are destroyed when it returns.
void describeExportOptions(const std::function<void(const CLI::App&)>& read);

} // namespace vorn
