/* The bare limit of reading a conversation: opens the database and steps the message statement over the given chats,
   reading every column. Usage: bench-rows DB CHAT… ; prints how many rows it read, and a checksum. */
#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char head[] = "SELECT m.ROWID, m.guid, m.text, m.attributedBody, m.is_from_me, m.date,\n"
                           "       m.service, m.associated_message_type,\n"
                           "       m.item_type, m.date_retracted,\n"
                           "       m.date_edited, m.thread_originator_guid,\n"
                           "       cmj.chat_id\n"
                           "FROM message m\n"
                           "JOIN chat_message_join cmj ON cmj.message_id = m.ROWID\n"
                           "WHERE cmj.chat_id IN (";
static const char tail[] = ")\nORDER BY m.date ASC, m.ROWID ASC";

static long long readColumn(sqlite3_stmt* statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER: return sqlite3_column_int64(statement, column) & 1;
    case SQLITE_TEXT: return sqlite3_column_text(statement, column)[0] + sqlite3_column_bytes(statement, column);
    case SQLITE_BLOB: sqlite3_column_blob(statement, column); return sqlite3_column_bytes(statement, column);
    default: return 0;
    }
}

int main(int argc, char** argv)
{
    sqlite3* database = NULL;
    sqlite3_stmt* statement = NULL;
    char sql[4096];
    long long rows = 0, sum = 0;
    if (argc < 3 || argc > 100) return 2;
    strcpy(sql, head);
    for (int i = 2; i < argc; ++i) strcat(sql, i == 2 ? "?" : ", ?");
    strcat(sql, tail);
    if (sqlite3_open_v2(argv[1], &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, NULL) != SQLITE_OK ||
        sqlite3_prepare_v2(database, sql, -1, &statement, NULL) != SQLITE_OK) {
        fprintf(stderr, "%s\n", sqlite3_errmsg(database));
        return 1;
    }
    for (int i = 2; i < argc; ++i) sqlite3_bind_int64(statement, i - 1, atoll(argv[i]));
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < 13; ++column) sum += readColumn(statement, column);
        ++rows;
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    printf("%lld rows, sum %lld\n", rows, sum);
    return 0;
}
