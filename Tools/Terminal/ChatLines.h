#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/ScreenText.h"

#include <string>
#include <vector>

/// Longer texts laid out for a terminal of 81 columns, a line each. Threads: any.
namespace vorn {

/// The text to which the user consents.
std::vector<std::string> consentLines(const Consent& consent);

/// A title, what it is about, and what to do.
std::vector<std::string> instructionLines(const ScreenText& text);

/// The chat in numbers: a line for each row of a table. Days are those of the user's zone.
std::vector<std::string> statisticsLines(const NimbrelExportStats& stats);

/// The last six messages as they are previewed: who wrote, and the first 140 characters. What a terminal could take for
/// a command is replaced.
std::vector<std::string> previewLines(const MessageList& messages);

} // namespace vorn
