#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <cstddef>
#include <string>
#include <vector>

/// The texts of the page with everything that would be uploaded and what would not. Threads: any.
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

/// The rows for what the reader left out, by reason; none if it left out nothing.
std::vector<LeftOutRow> leftOutRows(const SkipTally& skipped);

/// What every archive leaves out, preceded, if it is so, by the sentence that nothing else was left out.
std::string leftOutNote(const SkipTally& skipped);

/// What the archive holds beside the list, in sentences.
std::vector<std::string> besideTexts(const NimbrelExportResult& result);

/// How many of `all` messages are listed: "12 of 1,204 messages" if `isSearching`. During a search, as far as it has
/// come.
std::string listedText(std::size_t listed, std::size_t all, bool isSearching);

/// Replaces a list without messages.
std::string nothingFoundText(const std::string& words);

/// How saving a copy goes. Empty before it begins.
StatusText copyText(const CopyPhase& phase);

} // namespace vorn
