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

/// The last six of `messages`, or all if there are fewer, as the user sees them before an upload. Takes the same time
/// however many there are. Threads: any.
std::vector<PreviewedMessage> previewOf(const MessageList& messages);

/// A made-up conversation as an example of what is uploaded.
std::vector<PreviewedMessage> exampleConversation();

inline constexpr const char* conversation = "Messages"; ///< the name of a message thread, for a screen reader
inline constexpr const char* userName = "You";
inline constexpr const char* assistantName = "Nimbrel";
inline constexpr const char* assistantInitial = "N";
inline constexpr const char* messagesService = "iMessage";

} // namespace vorn
