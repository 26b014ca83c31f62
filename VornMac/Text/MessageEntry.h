#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"
#include "Platform/Base/Dates.h"

#include <string>
#include <vector>

namespace vorn {

/// One message of the archive, as window and terminal list it: everything that the archive holds of it except
/// identifiers. A value.
struct MessageEntry {
    std::string day{}; ///< in the user's zone, as is the time
    std::string time{};
    std::string author{};
    std::vector<std::string> remarks{}; ///< the service it came by, and edits
    std::string text{};                 ///< its first 20,000 characters; empty without a text
    std::string rest{};                 ///< how many characters follow these; empty if all are shown
    std::vector<std::string> links{};
    std::vector<std::string> attachments{}; ///< the kind of each, and its MIME type
    bool fromMe = false;                    ///< sent by the user, not by the assistant
    bool operator==(const MessageEntry&) const = default;
};

/// Lists `message` with its whole text, as far as it can be drawn.
MessageEntry entryOf(const ExportedMessage& message, const LocalDates& dates);

/// The time and the remarks: "9:15:00 AM · iMessage · Edited".
std::string detailText(const MessageEntry& entry);

/// The links or the attachments, a line each.
std::string linesOf(const std::vector<std::string>& texts);

/// The whole entry for a screen reader.
std::string spokenText(const MessageEntry& entry);

/// The kind of an attachment of `mimeType`, in words: "Photo (image/jpeg)".
std::string attachmentText(std::string_view mimeType);

} // namespace vorn
