#pragma once

#include "Platform/SQLite/SQLiteDatabase.h"

namespace vorn {

/// Throws `SQLiteError` if a table that the export reads is a view or a virtual table, or if one of the columns that
/// every database has is generated. Messages makes none of these, and a small file could make them arbitrarily large.
void requireStoredTables(const SQLiteDatabase& database);

} // namespace vorn
