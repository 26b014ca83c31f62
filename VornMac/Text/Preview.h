#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <string>
#include <vector>

namespace vorn {

/// One message of the preview. A value.
struct PreviewedMessage {
    std::string text; ///< its first 140 characters as `drawable` gives them, or a word for one without text
    bool fromMe = false;
    bool operator==(const PreviewedMessage&) const = default;
};

/// `message` with who wrote it, as a line of its own: "You: Hello".
std::string spokenText(const PreviewedMessage& message);

/// The end of `messages` as the user sees it before an upload: the last six, or all if they are fewer. Takes as long
/// for a million of them. Threads: any.
std::vector<PreviewedMessage> previewOf(const MessageList& messages);

/// A made-up conversation, to show what kind of thing is uploaded.
std::vector<PreviewedMessage> exampleConversation();

inline constexpr const char* conversation = "Messages"; ///< what a screen reader calls one
inline constexpr const char* userName = "You";
inline constexpr const char* assistantName = "Nimbrel";
inline constexpr const char* assistantInitial = "N";
inline constexpr const char* messagesService = "iMessage";

} // namespace vorn
