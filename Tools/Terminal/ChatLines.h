#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/ScreenText.h"

#include <string>
#include <vector>

/// Longer texts laid out as lines for a terminal of 80 columns. Threads: any.
namespace vorn {

/// The text to which the user consents.
std::vector<std::string> consentLines(const Consent& consent);

/// The title of `text`, its explanation, and the numbered steps.
std::vector<std::string> instructionLines(const ScreenText& text);

/// The chat in numbers: a line for each row of a table. Days are in the user's time zone.
std::vector<std::string> statisticsLines(const NimbrelExportStats& stats);

/// The last six messages as they are previewed: the sender and the first 140 characters. Control characters are
/// replaced.
std::vector<std::string> previewLines(const MessageList& messages);

} // namespace vorn
