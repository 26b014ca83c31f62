#pragma once

#include "NimbrelExportKit/Records/ExportRecords.h"

#include <string>
#include <vector>

namespace vorn {

/// What would leave this Mac and what never does, and what it earns: the text to which the user consents. `reward` is
/// the model's.
std::vector<std::string> consentLines(const std::string& reward);

/// How to let Vorn read Messages.
std::vector<std::string> accessLines();

/// The chat in numbers: a line for each row of a table. Days are those of the user's zone.
std::vector<std::string> statisticsLines(const NimbrelExportStats& stats);

/// The last six messages as they are previewed: who wrote, and the first 140 characters. What a terminal could take for
/// a command is replaced.
std::vector<std::string> previewLines(const MessageList& messages);

} // namespace vorn
