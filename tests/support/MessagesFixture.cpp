#include "tests/support/MessagesFixture.h"

#include <algorithm>
#include <cctype>

namespace vorn::testing {
namespace {

const std::vector<std::string> messageColumns = {
    "guid TEXT",
    "text TEXT",
    "handle_id INTEGER DEFAULT 0",
    "attributedBody BLOB",
    "service TEXT",
    "date INTEGER",
    "is_from_me INTEGER DEFAULT 0",
    "item_type INTEGER DEFAULT 0",
    "associated_message_type INTEGER DEFAULT 0",
    "date_edited INTEGER DEFAULT 0",
    "date_retracted INTEGER DEFAULT 0",
    "thread_originator_guid TEXT",
};
const std::vector<std::string> chatColumns = {"guid TEXT", "style INTEGER", "chat_identifier TEXT",
                                              "service_name TEXT"};
const std::vector<std::string> attachmentColumns = {"guid TEXT", "filename TEXT", "uti TEXT", "mime_type TEXT"};

std::string nameOf(const std::string& column)
{
    return column.substr(0, column.find(' '));
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text;
}

} // namespace

ByteBuffer attributedBody(const std::string& text)
{
    const std::string bytes = "NSString\x01\x94\x84\x01+" + std::string(1, static_cast<char>(text.size())) + text;
    return {bytesOf(bytes).begin(), bytesOf(bytes).end()};
}

MessagesFixture::MessagesFixture(const std::filesystem::path& path, MessagesSchema schema)
    : path_(path), schema_(std::move(schema)), database_(path.string(), SQLiteDatabase::Mode::create)
{
    database_.execute("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0");
    createTable("message", messageColumns);
    createTable("chat", chatColumns);
    createTable("handle", {"id TEXT", "service TEXT"});
    createTable("chat_handle_join", {"chat_id INTEGER", "handle_id INTEGER"}, "UNIQUE(chat_id, handle_id)");
    createTable("chat_message_join", {"chat_id INTEGER", "message_id INTEGER", "message_date INTEGER DEFAULT 0"},
                "UNIQUE(chat_id, message_id)");
    if (schema_.attachmentTables) {
        createTable("attachment", attachmentColumns);
        createTable("message_attachment_join", {"message_id INTEGER", "attachment_id INTEGER"});
    }
    if (schema_.indexes) {
        database_.execute("CREATE INDEX cmj_idx_message_id ON chat_message_join(message_id);"
                          "CREATE INDEX cmj_idx_chat_id_date ON chat_message_join(chat_id, message_date, message_id);"
                          "CREATE INDEX message_idx_date ON message(date)");
    }
}

void MessagesFixture::createTable(const std::string& name, std::vector<std::string> columns,
                                  const std::string& constraints)
{
    std::erase_if(columns,
                  [&](const std::string& column) { return schema_.without.contains(name + "." + nameOf(column)); });
    if (schema_.extraColumns) columns.insert(columns.begin() + 1, {"extra_one TEXT", "extra_two INTEGER DEFAULT 7"});
    columns.emplace_back("ROWID INTEGER PRIMARY KEY AUTOINCREMENT");
    std::rotate(columns.begin(), columns.end() - 1, columns.end());
    if (schema_.shuffled) {
        std::sort(columns.begin(), columns.end(), [](const auto& a, const auto& b) {
            return std::string(a.rbegin(), a.rend()) < std::string(b.rbegin(), b.rend());
        });
    }
    std::string definitions = joined(columns);
    if (schema_.upperCase) {
        std::transform(definitions.begin(), definitions.end(), definitions.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    }
    const bool constrained = schema_.indexes && !constraints.empty(); // a constraint creates an index of its own
    database_.execute("CREATE TABLE " + name + " (" + definitions + (constrained ? ", " + constraints : "") + ")");
}

void MessagesFixture::insert(const std::string& table, const Values& values)
{
    std::vector<std::string> names;
    std::vector<std::string> marks;
    std::vector<SQLiteValue> bindings;
    for (const auto& [name, value] : values) {
        if (schema_.without.contains(table + "." + name)) continue;
        names.push_back(name);
        marks.emplace_back("?");
        bindings.push_back(value);
    }
    database_.run("INSERT INTO " + table + " (" + joined(names) + ") VALUES (" + joined(marks) + ")", bindings);
}

void MessagesFixture::handle(std::int64_t rowID, SQLiteValue id, const std::string& service)
{
    insert("handle", {{"ROWID", rowID}, {"id", std::move(id)}, {"service", service}});
}

void MessagesFixture::chat(std::int64_t rowID, SQLiteValue guid, const std::vector<std::int64_t>& handles,
                           std::int64_t style, SQLiteValue service)
{
    insert("chat",
           {{"ROWID", rowID}, {"guid", std::move(guid)}, {"style", style}, {"service_name", std::move(service)}});
    for (const std::int64_t handle : handles) insert("chat_handle_join", {{"chat_id", rowID}, {"handle_id", handle}});
}

void MessagesFixture::assistantChat()
{
    handle(1, assistant);
    chat(1, "iMessage;-;" + std::string(assistant), {1});
}

std::int64_t MessagesFixture::message(const MessageRow& row)
{
    const std::int64_t rowID = row.rowID.value_or(lastMessage_ + 1);
    lastMessage_ = std::max(lastMessage_, rowID);
    insert("message", {{"ROWID", rowID},
                       {"guid", row.guid.value_or("guid-" + std::to_string(rowID))},
                       {"text", row.text},
                       {"attributedBody", row.attributedBody},
                       {"is_from_me", row.isFromMe},
                       {"date", row.date},
                       {"service", row.service},
                       {"associated_message_type", row.associatedMessageType},
                       {"item_type", row.itemType},
                       {"date_retracted", row.dateRetracted},
                       {"date_edited", row.dateEdited},
                       {"thread_originator_guid", row.threadOriginatorGuid}});
    for (const std::int64_t chat : row.chats) {
        insert("chat_message_join", {{"chat_id", chat}, {"message_id", rowID}, {"message_date", row.date}});
    }
    return rowID;
}

void MessagesFixture::messages(std::int64_t count, std::int64_t apart, const MessageRow& row)
{
    const std::int64_t first = message(row);
    lastMessage_ = first + count - 1;
    database_.run("WITH RECURSIVE later (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM later WHERE i + 1 < ?2) "
                  "INSERT INTO message (ROWID, guid, text, attributedBody, is_from_me, date, service, "
                  "associated_message_type, item_type, date_retracted, date_edited, thread_originator_guid) "
                  "SELECT ?1 + i, 'guid-' || (?1 + i), text, attributedBody, i % 3 = 0, date + i * ?3, service, "
                  "associated_message_type, item_type, date_retracted, date_edited, thread_originator_guid "
                  "FROM message, later WHERE message.ROWID = ?1 AND ?2 > 1",
                  {first, count, apart});
    database_.run("INSERT INTO chat_message_join (chat_id, message_id, message_date) "
                  "SELECT chat_id, message.ROWID, date FROM message, chat_message_join "
                  "WHERE message_id = ?1 AND message.ROWID BETWEEN ?1 + 1 AND ?2",
                  {first, lastMessage_});
}

void MessagesFixture::attachment(std::int64_t message, SQLiteValue mimeType, SQLiteValue typeIdentifier)
{
    const std::int64_t rowID = ++lastAttachment_;
    insert("attachment", {{"ROWID", rowID}, {"mime_type", std::move(mimeType)}, {"uti", std::move(typeIdentifier)}});
    insert("message_attachment_join", {{"message_id", message}, {"attachment_id", rowID}});
}

void MessagesFixture::checkpoint()
{
    database_.execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

} // namespace vorn::testing
