#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"

#include "NimbrelExportKit/Messages/HandleNormalizer.h"
#include "NimbrelExportKit/Messages/StoredTables.h"

namespace vorn::NimbrelChatLocator {
namespace {

enum Column { rowID, guid, service, handle };

std::string statementText(bool hasService)
{
    return std::string("SELECT c.ROWID, c.guid, ") + (hasService ? "c.service_name" : "NULL") +
           ", h.id\n"
           "FROM chat c\n"
           "JOIN chat_handle_join chj ON chj.chat_id = c.ROWID\n"
           "JOIN handle h ON h.ROWID = chj.handle_id\n"
           "WHERE c.style = ?\n"
           "  AND (SELECT COUNT(*) FROM chat_handle_join x WHERE x.chat_id = c.ROWID) = 1\n"
           "ORDER BY c.ROWID";
}

} // namespace

std::vector<NimbrelChat> locate(const SQLiteDatabase& database, const std::vector<std::string>& handles)
{
    const std::set<std::string> wanted = HandleNormalizer::normalizedSet(handles);
    std::vector<NimbrelChat> chats;
    if (wanted.empty()) return chats;
    requireStoredTables(database);
    const bool hasService = database.columns("chat").contains("service_name");
    database.query(statementText(hasService), {oneToOneStyle}, [&](const SQLiteRow& row) {
        const auto chatRow = row.int64(rowID);
        auto chatGuid = row.text(guid);
        auto participant = row.text(handle);
        if (!chatRow || !chatGuid || !participant) return;
        if (!wanted.contains(HandleNormalizer::normalize(*participant))) return;
        chats.push_back({*chatRow, std::move(*chatGuid), std::move(*participant), row.text(service)});
    });
    return chats;
}

} // namespace vorn::NimbrelChatLocator
