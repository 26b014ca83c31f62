#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// A row of table `attachment`. The file it names does not exist.
struct SampleAttachment {
    std::string guid;
    std::string transferName; ///< the file's name
    std::optional<std::string_view> uti;
    std::optional<std::string_view> mimeType; ///< voice memos have an empty one
    std::string_view exportedType;            ///< the MIME type that an export gives it
    std::int64_t bytes = 0;
};

/// A row of table `message` with its attachments. Dates are nanoseconds since 2001-01-01T00:00:00Z, 0 for none. Empty
/// strings and buffers stand for NULL, except for `text` and `body`.
struct SampleMessage {
    std::int64_t rowID = 0;
    std::size_t chat = 0; ///< place in the cast's list
    std::string guid;
    std::optional<std::string> text;
    std::optional<ByteBuffer> body; ///< the attributed body
    bool fromMe = false;
    std::int64_t handle = 0; ///< ROWID; 0 for the user's own messages to a group
    std::string_view service;
    std::int64_t date = 0;
    std::int64_t dateRead = 0;
    std::int64_t dateDelivered = 0;
    std::int64_t dateEdited = 0;
    std::int64_t dateRetracted = 0;

    std::int64_t itemType = 0; ///< not 0: an event in the conversation, not a written message
    std::int64_t groupActionType = 0;
    std::int64_t otherHandle = 0;
    std::string groupTitle;

    std::string associatedGuid;      ///< the message reacted to, as "p:0/" and its guid
    std::int64_t associatedType = 0; ///< 2000–2006 sets a reaction, 3000–3006 takes it back
    std::int64_t associatedLength = 0;
    std::string_view associatedEmoji;

    std::string replyToGuid;          ///< the previous message; nearly every row has it, so it marks no thread
    std::string threadOriginatorGuid; ///< the specific message that this one replies to
    std::string threadOriginatorPart;

    bool isAudio = false;
    bool hasLink = false;
    std::int64_t parts = 1;
    ByteBuffer payload; ///< of the balloon that shows a link: of a realistic size, and all zeros
    std::vector<SampleAttachment> attachments;
};

} // namespace vorn
