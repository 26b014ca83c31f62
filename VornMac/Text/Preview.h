#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <string>
#include <vector>

namespace vorn {

/// One message of the preview. A value.
struct PreviewedMessage {
    std::string text; ///< its first 140 characters, made `drawable`, or a word for a message without text
    bool fromMe = false;
    bool operator==(const PreviewedMessage&) const = default;
};

/// `message` with its sender, as one line: "You: Hello".
std::string spokenText(const PreviewedMessage& message);

/// The end of `messages` as the user sees it before an upload: the last six, or all if they are fewer. The time does
/// not depend on their number. Threads: any.
std::vector<PreviewedMessage> previewOf(const MessageList& messages);

/// A made-up conversation as an example of what is uploaded.
std::vector<PreviewedMessage> exampleConversation();

inline constexpr const char* conversation = "Messages"; ///< a thread's name for a screen reader
inline constexpr const char* userName = "You";
inline constexpr const char* assistantName = "Nimbrel";
inline constexpr const char* assistantInitial = "N";
inline constexpr const char* messagesService = "iMessage";

} // namespace vorn
