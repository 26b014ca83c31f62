#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string>

namespace vorn {

/// The exit statuses of `vorn-export`, by which scripts tell the cases apart.
enum class ExportStatus {
    done = 0,
    failed = 1, ///< any other problem, such as too little memory or a bug
    wrongArguments = 2,
    noDatabase = 3,
    accessDenied = 4,
    unreadable = 5,    ///< not a database, or every copy was damaged
    databaseError = 6, ///< any other failure of SQLite
    outputNotWritable = 7,
    copyFailed = 8,     ///< the private copy could not be made, for example because the disk is full
    statisticsLost = 9, ///< the archive is written, but what was in it could not be printed
    nothingFound = 10,  ///< nothing was written
};

/// Why an export failed: a status for the calling program, and a text for the user.
struct ExportFailure {
    ExportStatus status;
    std::string text; ///< whole sentences, without a newline at the end
    bool operator==(const ExportFailure&) const = default;
};

/// The failure for a `result` without messages; nothing if it has any.
std::optional<ExportFailure> failureOfFinding(const NimbrelExportResult& result);

/// A failure while the conversation was read.
ExportFailure failureOfReading(const std::exception& error);

/// A failure while the archive was packed and written to `output`.
ExportFailure failureOfWriting(const std::exception& error, const std::filesystem::path& output);

} // namespace vorn
