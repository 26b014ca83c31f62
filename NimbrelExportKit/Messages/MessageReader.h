#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/SQLite/SQLiteDatabase.h"

#include <cstdint>
#include <functional>
#include <vector>

/// Reads the messages of the located chats from a copy of the Messages database. No attachment is ever opened.
namespace vorn::MessageReader {

struct Output {
    MessageList messages; ///< by time, then by row
    SkipTally skipped;    ///< "reaction", "system", "unsent", "empty", "undated"
    bool operator==(const Output&) const = default;
};

/// Called every few thousand rows with the number read so far. What it throws ends the reading.
using OnRows = std::function<void(std::int64_t rows)>;

/// Every message of `chats`. Columns that a system's database lacks read as their defaults. Throws `SQLiteError`, and
/// `Cancelled` if `cancel` is raised while a text is searched for links: one message may be large.
Output read(const std::vector<NimbrelChat>& chats, const SQLiteDatabase& database, const OnRows& onRows = {},
            const CancelFlag& cancel = CancelFlag::never());

} // namespace vorn::MessageReader
