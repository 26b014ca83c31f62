#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/SQLite/SQLiteDatabase.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {

/// The attachments of messages, looked up by the message's ROWID. Threads: one at a time, lookups included.
/// Lookups come nearly in row order, so each begins at the last result; a hash table would miss the cache for each of a
/// million messages.
class AttachmentIndex {
public:
    /// Reads the attachments of all messages in the chats that `bindings` bind to the placeholders `marks`. Empty when
    /// the database has no table of attachments. Keeps the MIME types in `arena`. Throws `SQLiteError`.
    AttachmentIndex(const std::string& marks, const std::vector<SQLiteValue>& bindings, const SQLiteDatabase& database,
                    TextArena& arena);

    bool has(std::int64_t message);

    /// In the order of the attachments' rows. Their texts are borrowed from the arena.
    std::vector<ExportedAttachment> of(std::int64_t message);

private:
    struct Entry {
        std::int64_t message;
        RecordText mimeType;
    };

    void moveTo(std::int64_t message);

    std::vector<Entry> entries_;
    std::size_t place_ = 0; ///< the index of the first entry not before the last message looked up
};

} // namespace vorn
