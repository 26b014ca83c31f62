#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/SQLite/SQLiteDatabase.h"

#include <cstdint>
#include <string>
#include <vector>

/// Finds the assistant's one-to-one conversations in a copy of the Messages database.
namespace vorn::NimbrelChatLocator {

/// `chat.style` of a conversation with one other person; 43 is a group.
inline constexpr std::int64_t oneToOneStyle = 45;

/// The chats whose one other participant is one of `handles`, by ROWID; never a group. Several chats are normal: a
/// handle has one for each service. Runs no SQL if all `handles` are blank. Throws `SQLiteError`, also for a database
/// with a view or generated column where Messages stores its data (see `requireStoredTables`).
std::vector<NimbrelChat> locate(const SQLiteDatabase& database, const std::vector<std::string>& handles);

} // namespace vorn::NimbrelChatLocator
