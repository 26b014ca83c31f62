#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace vorn::sandbox {

/// The two documents of an export, held against their format: "vorn.nimbrel-imessage", version 1.
/// Errors: `ArchiveError`.
class ExportCheck {
public:
    /// Reads the manifest; returns it.
    nlohmann::json readManifest(std::string_view text);

    /// Reads one message, in the document's order.
    void readMessage(std::string_view text);

    /// Call it after the last message: the counts must be the manifest's.
    void finish() const;

    std::int64_t messages() const { return messages_; }
    std::int64_t prompts() const { return prompts_; } ///< messages that the user sent

private:
    std::int64_t announcedMessages_ = 0;
    std::int64_t announcedChats_ = 0;
    std::int64_t messages_ = 0;
    std::int64_t prompts_ = 0;
    std::int64_t lastSentAt_ = 0;
    std::set<std::string> chats_;
};

} // namespace vorn::sandbox
