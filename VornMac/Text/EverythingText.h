#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <cstddef>
#include <string>
#include <vector>

/// The texts of the page that shows everything an upload would contain and what it would leave out. Threads: any.
namespace vorn {

inline constexpr const char* seeEverything = "See everything we upload";
inline constexpr const char* everythingTitle = "Everything we upload";
inline constexpr const char* searchMessages = "Search messages";
inline constexpr const char* clearSearch = "Clear search";
inline constexpr const char* saveCopyLabel = "Save a copy…";
inline constexpr const char* archiveKind = "ZIP archive (*.zip)"; ///< for the filter of file dialogs
inline constexpr const char* leftOutHeading = "Left out";
inline constexpr const char* besidesHeading = "Also in the archive";

/// How many messages were left out for one reason. A value.
struct LeftOutRow {
    std::string label;
    std::string count;
    std::string reason; ///< a sentence; empty for an unknown reason
    bool operator==(const LeftOutRow&) const = default;
};

/// A row for each reason for which messages were left out; none if nothing was.
std::vector<LeftOutRow> leftOutRows(const SkipTally& skipped);

/// What every archive leaves out; if no message was left out, preceded by a sentence that says so.
std::string leftOutNote(const SkipTally& skipped);

/// What the archive holds besides the listed messages, in sentences.
std::vector<std::string> besideTexts(const NimbrelExportResult& result);

/// How many of `all` messages are listed: "12 of 1,204 messages" if `isSearching`, with the matches found so far, else
/// "1,204 messages".
std::string listedText(std::size_t listed, std::size_t all, bool isSearching);

/// Shown instead of an empty list, when no message contains `words`.
std::string nothingFoundText(const std::string& words);

/// The state of saving a copy. Empty before it begins.
StatusText copyText(const CopyPhase& phase);

} // namespace vorn
