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

/// What the user asked `vorn-export` for.
struct ExportOptions {
    std::filesystem::path database; ///< empty where the user has no home folder, and named none
    bool isUsersOwn = true;         ///< `database` was not named
    std::vector<std::string> handles;
    std::filesystem::path output;
    Instant exportedAt;
    bool json = false;       ///< statistics for programs
    bool allowEmpty = false; ///< an archive is written also where there is nothing to put into it
};

/// The arguments were all about ending at once: `text` is the help, the version, or what is wrong with them.
struct ExportOptionsEnd {
    std::string text;
    bool isMistake = false;
};

/// Reads the command line. `now` is the default time of the export.
std::variant<ExportOptions, ExportOptionsEnd> parseExportOptions(int argc, const char* const* argv, Instant now);

/// Hands `read` all options with their help. It is gone once `read` returns.
void describeExportOptions(const std::function<void(const CLI::App&)>& read);

} // namespace vorn
