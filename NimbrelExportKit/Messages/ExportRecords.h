#pragma once

#include "NimbrelExportKit/Messages/MessageList.h"
#include "Platform/Base/Dates.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What an export holds. All records are values. Texts are well-formed UTF-8.
namespace vorn {

/// A one-to-one conversation with the assistant.
struct NimbrelChat {
    std::int64_t rowID = 0;
    std::string guid;
    std::string handle;                 ///< the other participant's, as stored
    std::optional<std::string> service; ///< nothing when the database has no such column or value
    bool operator==(const NimbrelChat&) const = default;
};

/// How many rows an export left out, by reason.
struct SkipTally {
    std::map<std::string, std::int64_t, std::less<>> counts;

    void add(std::string_view reason, std::int64_t n);
    std::int64_t operator[](std::string_view reason) const; ///< 0 for a reason that did not occur
    bool operator==(const SkipTally&) const = default;
};

struct NimbrelExportStats {
    std::int64_t chatCount = 0;
    std::int64_t messageCount = 0;
    std::int64_t promptCount = 0;   ///< sent by the user
    std::int64_t replyCount = 0;    ///< sent by the assistant
    std::optional<Instant> firstAt; ///< nothing without messages
    std::optional<Instant> lastAt;

    NimbrelExportStats(const std::vector<NimbrelChat>& chats, const MessageList& messages);
    bool operator==(const NimbrelExportStats&) const = default;
};

struct NimbrelExportResult {
    std::vector<NimbrelChat> chats;
    MessageList messages; ///< by time, then by row
    SkipTally skipped;

    NimbrelExportStats stats() const { return {chats, messages}; } ///< counted on each call
    std::vector<std::string> agentHandles() const;                 ///< of the chats, in their order, each once
    bool operator==(const NimbrelExportResult&) const = default;
};

} // namespace vorn
