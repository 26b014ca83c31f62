#pragma once

#include "NimbrelExportKit/Messages/RecordText.h"

#include <cstdint>
#include <optional>
#include <vector>

/// One message of an export, with its links and the types of its attachments. Values; texts are well-formed UTF-8.
namespace vorn {

struct ExportedLink {
    RecordText url;                  ///< absolute
    std::optional<RecordText> title; ///< never filled from the database; written as null
    bool operator==(const ExportedLink&) const = default;
};

struct ExportedAttachment {
    RecordText mimeType; ///< "application/octet-stream" when unknown
    bool operator==(const ExportedAttachment&) const = default;
};

struct ExportedMessage {
    std::int64_t rowID = 0;  ///< its ROWID in the database; orders messages of the same second; not written
    std::int64_t sentAt = 0; ///< whole seconds since 1970 (UTC), rounded down
    RecordText guid;
    RecordText chat; ///< the guid of its chat; empty if unknown
    RecordText text;
    std::optional<RecordText> service;     ///< nothing when the database has no such column or value
    std::optional<RecordText> replyToGuid; ///< the guid of the message that began its thread
    std::vector<ExportedLink> links;
    std::vector<ExportedAttachment> attachments;
    bool fromMe = false; ///< sent by the user, not by the assistant
    bool edited = false;
    bool operator==(const ExportedMessage&) const = default;
};

} // namespace vorn
