#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string>

namespace vorn {

/// How `vorn-export` ends; scripts tell the cases apart.
enum class ExportStatus {
    done = 0,
    failed = 1, ///< out of memory, or a mistake of ours
    wrongArguments = 2,
    noDatabase = 3,
    accessDenied = 4,
    unreadable = 5,    ///< no database, or every copy was damaged
    databaseError = 6, ///< any other failure of SQLite
    outputNotWritable = 7,
    copyFailed = 8,     ///< the private copy could not be made, for example because the disk is full
    statisticsLost = 9, ///< the archive is written, but what was in it could not be printed
    nothingFound = 10,  ///< nothing was written
};

/// Why there is no archive, for the program that called and for the person who reads.
struct ExportFailure {
    ExportStatus status;
    std::string text; ///< whole sentences, without a newline at the end
    bool operator==(const ExportFailure&) const = default;
};

/// The failure of a `result` that is not worth an archive; nothing when it has messages.
std::optional<ExportFailure> failureOfFinding(const NimbrelExportResult& result);

/// A failure while the conversation was read.
ExportFailure failureOfReading(const std::exception& error);

/// A failure while the archive was packed and written to `output`.
ExportFailure failureOfWriting(const std::exception& error, const std::filesystem::path& output);

} // namespace vorn
