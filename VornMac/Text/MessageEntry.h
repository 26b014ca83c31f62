#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"
#include "Platform/Base/Dates.h"

#include <string>
#include <vector>

namespace vorn {

/// One message of the archive, as window and terminal list it: all that the archive holds of it but identifiers. A
/// value.
struct MessageEntry {
    std::string day{}; ///< of the user's zone, as below
    std::string time{};
    std::string author{};
    std::vector<std::string> remarks{}; ///< the service it came by, and what was done with it
    std::string text{};                 ///< empty where there is none, else its first 20,000 characters
    std::string rest{};                 ///< how much follows after these; empty where all of it is shown
    std::vector<std::string> links{};
    std::vector<std::string> attachments{}; ///< what each is, and its MIME type
    bool fromMe = false;                    ///< sent by the user, not by the assistant
    bool operator==(const MessageEntry&) const = default;
};

/// Lists `message`, its whole text included as far as it can be drawn.
MessageEntry entryOf(const ExportedMessage& message, const LocalDates& dates);

/// The time and the remarks: "9:15:00 AM · iMessage · Edited".
std::string detailText(const MessageEntry& entry);

/// The links or the attachments, a line each.
std::string linesOf(const std::vector<std::string>& texts);

/// All of it, as a screen reader says it.
std::string spokenText(const MessageEntry& entry);

/// What an attachment of `mimeType` is, in words: "Photo (image/jpeg)".
std::string attachmentText(std::string_view mimeType);

} // namespace vorn
