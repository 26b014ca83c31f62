#pragma once

#include "Platform/Base/CancelFlag.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// What kind of Messages database to write. Equal options give equal rows.
struct SampleHistoryOptions {
    /// Twice as many rows would not fit into the nine years that a history spans at most.
    static constexpr std::int64_t mostMessages = 100'000'000;

    std::int64_t messages = 5'000; ///< rows of table `message`, of all conversations
    std::uint64_t seed = 1;

    /// The assistant's handles, distinct; each has a one-to-one conversation, and the first phone number a second one
    /// by SMS. Empty means a phone number and an e-mail address of our own.
    std::vector<std::string> handles = {};

    std::int64_t inLog = 0; ///< how many of the newest rows are in the write-ahead log only

    /// Only the one-to-one conversations of the handles, without the SMS one: by default a single conversation.
    bool onlyAssistant = false;

    std::int64_t until = 1'772'356'500; ///< no row is later than this; seconds since 1970 (2026-03-01T09:15:00Z)
    bool replaceExisting = false;       ///< otherwise an existing file is an error

    const CancelFlag* cancel = nullptr; ///< cancels the writing; may be null
    std::function<void(std::int64_t written, std::int64_t messages)> progress =
        {}; ///< every few thousand rows; may be absent
};

/// One conversation of the history.
struct SampleConversation {
    std::string guid;
    std::string service;
    std::int64_t style = 45;          ///< 43 is a group, 45 one-to-one
    std::vector<std::string> handles; ///< the participants other than the user
    bool exported = false;            ///< one-to-one with the assistant
    std::int64_t rows = 0;
    bool operator==(const SampleConversation&) const = default;
};

/// What an export of the assistant's conversations finds in the history.
struct SampleExpectation {
    std::int64_t rows = 0;    ///< of the assistant's conversations, kept or not
    std::int64_t kept = 0;    ///< messages that are exported
    std::int64_t prompts = 0; ///< of the kept: sent by the user
    std::int64_t replies = 0;
    std::map<std::string, std::int64_t> skipped;         ///< by reason; reasons that do not occur are absent
    std::map<std::string, std::int64_t> attachmentTypes; ///< MIME type to number, of the kept messages
    std::int64_t edited = 0;
    std::int64_t threaded = 0; ///< replies to a specific message
    std::int64_t withLinks = 0;
    std::int64_t links = 0; ///< each address once per message
    std::int64_t withAttachments = 0;
    std::int64_t blobOnly = 0;   ///< the text is in the attributed body only
    std::int64_t characters = 0; ///< Unicode scalars of all texts, without placeholders and white space at the ends
    std::int64_t keptInLog = 0;  ///< of the kept: in the write-ahead log only
    std::optional<std::int64_t> firstAt; ///< whole seconds since 1970
    std::optional<std::int64_t> lastAt;
    bool operator==(const SampleExpectation&) const = default;
};

struct SampleHistorySummary {
    std::vector<std::string> handles; ///< to pass to the exporter
    std::vector<SampleConversation> conversations;
    std::int64_t messages = 0;
    std::int64_t attachments = 0;
    std::int64_t inLog = 0;
    SampleExpectation expected;
    bool operator==(const SampleHistorySummary&) const = default;
};

/// Writes a Messages database to `path` as a current macOS keeps it, readable by this user only, in write-ahead-log
/// mode; beside it is `path` + "-wal" if rows are in the log, and nothing else. Writes into a private folder beside
/// `path` and moves the files once they are complete. Errors: `SQLiteError`, `std::filesystem::filesystem_error`
/// (`file_exists` if there is a file that may not be replaced; a missing folder is not created),
/// `std::invalid_argument` for options that make no sense, `Cancelled`; nothing is left behind. Threads: any.
SampleHistorySummary writeSampleHistory(const std::filesystem::path& path, const SampleHistoryOptions& options);

} // namespace vorn
