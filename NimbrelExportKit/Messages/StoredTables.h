#pragma once

#include "NimbrelExportKit/SQLite/SQLiteDatabase.h"

namespace vorn {

/// Throws `SQLiteError` when `database` computes rows that the export takes for stored ones: when a view or a virtual
/// table stands in place of a table that it reads, or a generated column in place of one that every database has.
/// Messages has none of these, and a small file could make them as large as it likes.
void requireStoredTables(const SQLiteDatabase& database);

} // namespace vorn
