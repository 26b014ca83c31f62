#include "NimbrelExportKit/Messages/StoredTables.h"

#include <string>

namespace vorn {
namespace {

constexpr int sqliteError = 1; // SQLITE_ERROR, as for a missing table

/// Optional columns need no check: a generated one counts as absent.
constexpr const char* computed = R"(
SELECT s.name FROM sqlite_master s
WHERE s.type IN ('table', 'view')
  AND lower(s.name) IN ('message', 'chat', 'handle', 'chat_message_join', 'chat_handle_join', 'attachment',
                        'message_attachment_join')
  AND CASE WHEN s.type = 'view' OR s.rootpage = 0 THEN 1
      ELSE EXISTS (SELECT 1 FROM pragma_table_xinfo(s.name) c
                   WHERE c.hidden <> 0
                     AND lower(c.name) IN ('guid', 'text', 'is_from_me', 'date', 'style', 'id', 'chat_id', 'message_id',
                                           'handle_id', 'attachment_id')) END
LIMIT 1)";

} // namespace

void requireStoredTables(const SQLiteDatabase& database)
{
    database.query(computed, {}, [](const SQLiteRow& row) {
        throw SQLiteError(SQLiteError::Stage::prepare, sqliteError,
                          row.text(0).value_or("") + " does not store what it holds");
    });
}

} // namespace vorn
