#include "NimbrelExportKit/Messages/MessageStatements.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

const std::set<std::string> everyColumn = {"attributedbody", "service",     "associated_message_type", "item_type",
                                           "date_retracted", "date_edited", "thread_originator_guid"};

TEST(MessageStatement, NamesEveryColumnThatTheTableHas)
{
    EXPECT_EQ(messageStatement(everyColumn, placeholders(2)),
              "SELECT m.ROWID, m.guid, m.text, m.attributedBody, m.is_from_me, m.date,\n"
              "       m.service, m.associated_message_type,\n"
              "       m.item_type, m.date_retracted,\n"
              "       m.date_edited, m.thread_originator_guid,\n"
              "       cmj.chat_id\n"
              "FROM message m\n"
              "JOIN chat_message_join cmj ON cmj.message_id = m.ROWID\n"
              "WHERE cmj.chat_id IN (?, ?)\n"
              "ORDER BY m.date ASC, m.ROWID ASC");
}

TEST(MessageStatement, PutsAConstantForEachMissingColumn)
{
    EXPECT_EQ(messageStatement({}, placeholders(1)), "SELECT m.ROWID, m.guid, m.text, NULL, m.is_from_me, m.date,\n"
                                                     "       NULL, 0,\n"
                                                     "       0, 0,\n"
                                                     "       0, NULL,\n"
                                                     "       cmj.chat_id\n"
                                                     "FROM message m\n"
                                                     "JOIN chat_message_join cmj ON cmj.message_id = m.ROWID\n"
                                                     "WHERE cmj.chat_id IN (?)\n"
                                                     "ORDER BY m.date ASC, m.ROWID ASC");
}

TEST(AttachmentStatement, NamesTheColumnsThatTheTableHas)
{
    EXPECT_EQ(attachmentStatement({"mime_type", "uti"}, placeholders(3)),
              "SELECT maj.message_id, a.mime_type, a.uti\n"
              "FROM message_attachment_join maj\n"
              "JOIN attachment a ON a.ROWID = maj.attachment_id\n"
              "JOIN chat_message_join cmj ON cmj.message_id = maj.message_id\n"
              "WHERE cmj.chat_id IN (?, ?, ?)\n"
              "ORDER BY maj.message_id, a.ROWID");
    EXPECT_EQ(attachmentStatement({"rowid"}, "?").substr(0, 36), "SELECT maj.message_id, NULL, NULL\nFR");
}

} // namespace
} // namespace vorn
