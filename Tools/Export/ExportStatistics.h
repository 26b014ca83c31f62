#pragma once

#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <string>

namespace vorn {

/// What `vorn-export` prints about an export and its archive.
struct ExportStatistics {
    NimbrelExportStats stats;
    SkipTally skipped;
    ArchiveFile archive;
    std::string sha256; ///< of the archive, in hexadecimal
};

/// Lines for a person; times in UTC.
std::string textOf(const ExportStatistics& statistics);

/// One JSON object for programs: "chats", "messages", "prompts", "replies", "firstAt", "lastAt" (internet date-times or
/// null), "skipped" and "archive" with "path", "sizeBytes" and "sha256".
std::string jsonOf(const ExportStatistics& statistics);

} // namespace vorn
