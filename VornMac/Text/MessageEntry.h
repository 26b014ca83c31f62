#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"
#include "Platform/Base/Dates.h"

#include <string>
#include <vector>

namespace vorn {

/// One message of the archive, as the window and the terminal list it: everything the archive holds about it except
/// identifiers. A value.
struct MessageEntry {
    std::string day{}; ///< in the user's time zone, like `time`
    std::string time{};
    std::string author{};
    std::vector<std::string> remarks{}; ///< the service it came by; whether it is edited or a reply
    std::string text{};                 ///< its first 20,000 characters; empty without a text
    std::string rest{};                 ///< a sentence that counts the characters not shown; empty if all are shown
    std::vector<std::string> links{};
    std::vector<std::string> attachments{}; ///< the kind of each, and its MIME type
    bool fromMe = false;                    ///< sent by the user, not by the assistant
    bool operator==(const MessageEntry&) const = default;
};

/// The entry of `message`, with its texts made `drawable`.
MessageEntry entryOf(const ExportedMessage& message, const LocalDates& dates);

/// The time and the remarks: "9:15:00 AM · iMessage · Edited".
std::string detailText(const MessageEntry& entry);

/// `texts`, an entry's links or attachments, one per line.
std::string linesOf(const std::vector<std::string>& texts);

/// The whole entry for a screen reader.
std::string spokenText(const MessageEntry& entry);

/// The kind of an attachment of `mimeType`, in words: "Photo (image/jpeg)".
std::string attachmentText(std::string_view mimeType);

} // namespace vorn
