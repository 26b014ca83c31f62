#pragma once

#include "Platform/SQLite/SQLiteDatabase.h"

namespace vorn {

/// Throws `SQLiteError` if a table that the export reads is a view or a virtual table, or if a column that every
/// database has is generated. Messages makes none of these; they would let a small file yield unlimited data.
void requireStoredTables(const SQLiteDatabase& database);

} // namespace vorn
