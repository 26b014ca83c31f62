#include "NimbrelExportKit/Messages/MessageStatements.h"

#include "Platform/Base/Text.h"

namespace vorn {
namespace {

/// `table.column` if the database has the column, else `constant`.
std::string columnOr(const char* constant, const char* table, const char* column, const std::set<std::string>& columns)
{
    if (!columns.contains(text::lowercased(column))) return constant;
    return std::string(table) + "." + column;
}

} // namespace

std::string placeholders(std::size_t count)
{
    std::string marks;
    for (std::size_t i = 0; i < count; ++i) marks += i == 0 ? "?" : ", ?";
    return marks;
}

std::string messageStatement(const std::set<std::string>& columns, const std::string& marks)
{
    const auto optional = [&columns](const char* column, const char* constant) {
        return columnOr(constant, "m", column, columns);
    };
    return "SELECT m.ROWID, m.guid, m.text, " + optional("attributedBody", "NULL") +
           ", m.is_from_me, m.date,\n"
           "       " +
           optional("service", "NULL") + ", " + optional("associated_message_type", "0") +
           ",\n"
           "       " +
           optional("item_type", "0") + ", " + optional("date_retracted", "0") +
           ",\n"
           "       " +
           optional("date_edited", "0") + ", " + optional("thread_originator_guid", "NULL") +
           ",\n"
           "       cmj.chat_id\n"
           "FROM message m\n"
           "JOIN chat_message_join cmj ON cmj.message_id = m.ROWID\n"
           "WHERE cmj.chat_id IN (" +
           marks +
           ")\n"
           "ORDER BY m.date ASC, m.ROWID ASC";
}

std::string attachmentStatement(const std::set<std::string>& columns, const std::string& marks)
{
    return "SELECT maj.message_id, " + columnOr("NULL", "a", "mime_type", columns) + ", " +
           columnOr("NULL", "a", "uti", columns) +
           "\n"
           "FROM message_attachment_join maj\n"
           "JOIN attachment a ON a.ROWID = maj.attachment_id\n"
           "JOIN chat_message_join cmj ON cmj.message_id = maj.message_id\n"
           "WHERE cmj.chat_id IN (" +
           marks +
           ")\n"
           "ORDER BY maj.message_id, a.ROWID";
}

} // namespace vorn
