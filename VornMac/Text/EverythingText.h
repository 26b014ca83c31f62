#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"

#include <cstddef>
#include <string>
#include <vector>

/// All that would be uploaded, message by message, and what would not. Threads: any.
namespace vorn {

inline constexpr const char* seeEverything = "See everything we upload";
inline constexpr const char* everythingTitle = "Everything we upload";
inline constexpr const char* searchMessages = "Search messages";
inline constexpr const char* clearSearch = "Clear search";
inline constexpr const char* saveCopyLabel = "Save a copy…";
inline constexpr const char* archiveKind = "ZIP archive (*.zip)"; ///< as file dialogs filter
inline constexpr const char* leftOutHeading = "Left out";
inline constexpr const char* besidesHeading = "Also in the archive";

/// Why messages were left out, and how many. A value.
struct LeftOutRow {
    std::string label;
    std::string count;
    std::string reason; ///< a sentence; empty for one that is not known here
    bool operator==(const LeftOutRow&) const = default;
};

/// What the reader left out, by reason; empty where it left out nothing.
std::vector<LeftOutRow> leftOutRows(const SkipTally& skipped);

/// Says what every archive leaves out, and before that, where it is so, that nothing else was left out.
std::string leftOutNote(const SkipTally& skipped);

/// What the archive holds besides what is listed, in sentences.
std::vector<std::string> besideTexts(const NimbrelExportResult& result);

/// How many of `all` messages are listed: "12 of 1,204 messages" where `isSearching`. While a search goes on, as far as
/// it is.
std::string listedText(std::size_t listed, std::size_t all, bool isSearching);

/// Stands in for a list without messages.
std::string nothingFoundText(const std::string& words);

/// How saving a copy goes. Empty before.
StatusText copyText(const CopyPhase& phase);

} // namespace vorn
