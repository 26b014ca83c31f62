#include "tests/VornSandbox/SampleHistory/WrittenHistory.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace vorn::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::SizeIs;

class SampleSchema : public ::testing::Test {
protected:
    WrittenHistory history{{.messages = 30}};

    std::vector<std::string> columns(const std::string& table) const
    {
        return history.texts("SELECT name FROM pragma_table_info('" + table + "') ORDER BY cid");
    }
};

TEST_F(SampleSchema, HasTheTablesOfACurrentSystem)
{
    EXPECT_THAT(
        history.texts("SELECT name FROM sqlite_schema WHERE type = 'table'"),
        IsSupersetOf({"message", "chat", "handle", "attachment", "chat_message_join", "chat_handle_join",
                      "message_attachment_join", "deleted_messages", "sync_deleted_messages", "sync_deleted_chats",
                      "sync_deleted_attachments", "chat_recoverable_message_join", "recoverable_message_part",
                      "message_processing_task", "kvtable", "_SqliteDatabaseProperties", "sqlite_stat1"}));
}

TEST_F(SampleSchema, MessageIsAsWideAsOnACurrentSystem)
{
    const auto names = columns("message");
    EXPECT_GE(names.size(), 92U);
    EXPECT_LE(names.size(), 98U);
    EXPECT_THAT(names,
                IsSupersetOf({"ROWID", "guid", "text", "attributedBody", "is_from_me", "date", "service", "item_type",
                              "associated_message_type", "date_retracted", "date_edited", "thread_originator_guid"}));
}

TEST_F(SampleSchema, TheJoinsKeepTheirDeclaration)
{
    EXPECT_THAT(columns("chat_message_join"), ElementsAre("chat_id", "message_id", "message_date", "index_state"));
    EXPECT_THAT(columns("chat_handle_join"), ElementsAre("chat_id", "handle_id"));
    EXPECT_THAT(columns("message_attachment_join"), ElementsAre("message_id", "attachment_id"));
    EXPECT_THAT(columns("handle"),
                ElementsAre("ROWID", "id", "country", "service", "uncanonicalized_id", "person_centric_id"));
}

TEST_F(SampleSchema, HasEveryIndexAndTrigger)
{
    const auto made = [&](const char* type) {
        return history.texts("SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL AND type = '" + std::string(type) +
                             "'");
    };
    EXPECT_THAT(made("index"), SizeIs(32));
    EXPECT_THAT(made("trigger"), SizeIs(16));
    EXPECT_THAT(made("index"),
                IsSupersetOf({"CREATE INDEX chat_message_join_idx_chat_id ON chat_message_join (chat_id)",
                              "CREATE INDEX chat_message_join_idx_message_id_only ON chat_message_join (message_id)",
                              "CREATE INDEX chat_message_join_idx_message_date_id_chat_id ON chat_message_join "
                              "(chat_id, message_date, message_id)",
                              "CREATE INDEX message_idx_date ON message (date)"}));
}

TEST_F(SampleSchema, TriggersCallWhatOnlyMessagesHas)
{
    const SQLiteDatabase database(history.path().string(), SQLiteDatabase::Mode::create);
    for (const char* statement : {"UPDATE chat SET state = 3", "DELETE FROM message"}) {
        SCOPED_TRACE(statement);
        EXPECT_THROW(database.execute(statement), SQLiteError);
    }
    EXPECT_EQ(history.number("SELECT count(*) FROM message"), 30) << "the failed statements changed nothing";
}

TEST_F(SampleSchema, IsInWriteAheadLogModeAndSound)
{
    EXPECT_THAT(history.texts("PRAGMA journal_mode"), ElementsAre("wal"));
    EXPECT_THAT(history.texts("PRAGMA integrity_check"), ElementsAre("ok"));
    EXPECT_THAT(history.texts("PRAGMA foreign_key_check"), ElementsAre());
}

} // namespace
} // namespace vorn::testing
