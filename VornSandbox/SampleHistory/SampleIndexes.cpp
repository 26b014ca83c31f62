#include "VornSandbox/SampleHistory/SampleSchema.h"

#include <array>

namespace vorn::sampleSchema {
namespace {

using namespace std::string_view_literals;

constexpr std::array indexStatements{
    "CREATE INDEX message_idx_date ON message (date)"sv,
    "CREATE INDEX message_idx_handle ON message (handle_id, date)"sv,
    "CREATE INDEX message_idx_handle_id ON message (handle_id)"sv,
    "CREATE INDEX message_idx_other_handle ON message (other_handle)"sv,
    "CREATE INDEX message_idx_is_read ON message (is_read, is_from_me, is_finished)"sv,
    "CREATE INDEX message_idx_isRead_isFromMe_itemType ON message (is_read, is_from_me, item_type)"sv,
    "CREATE INDEX message_idx_is_sent_is_from_me_error ON message (is_sent, is_from_me, error)"sv,
    "CREATE INDEX message_idx_failed ON message (is_finished, is_from_me, error)"sv,
    "CREATE INDEX message_idx_was_downgraded ON message (was_downgraded)"sv,
    "CREATE INDEX message_idx_expire_state ON message (expire_state)"sv,
    "CREATE INDEX message_idx_cache_has_attachments ON message (cache_has_attachments)"sv,
    "CREATE INDEX message_idx_associated_message2 ON message (associated_message_guid) WHERE associated_message_guid IS NOT NULL"sv,
    "CREATE INDEX message_idx_thread_originator_guid ON message (thread_originator_guid) WHERE thread_originator_guid IS NOT NULL"sv,
    "CREATE INDEX message_idx_schedule_state ON message (schedule_type, schedule_state) WHERE schedule_type != 0"sv,
    "CREATE INDEX message_idx_is_pending_satellite_send ON message (is_pending_satellite_send) WHERE is_pending_satellite_send != 0"sv,
    "CREATE INDEX message_idx_needs_relay ON message (needs_relay) WHERE needs_relay != 0"sv,
    "CREATE INDEX message_idx_date_recovered ON message (date_recovered) WHERE date_recovered != 0"sv,
    R"(CREATE INDEX message_idx_undelivered_one_to_one_imessage
    ON message (cache_roomnames, service, is_sent, is_delivered, was_downgraded, item_type)
    WHERE cache_roomnames IS NULL AND service = 'iMessage' AND is_sent = 1 AND is_delivered = 0 AND was_downgraded = 0
      AND item_type == 0)"sv,
    "CREATE INDEX chat_message_join_idx_chat_id ON chat_message_join (chat_id)"sv,
    "CREATE INDEX chat_message_join_idx_message_id_only ON chat_message_join (message_id)"sv,
    "CREATE INDEX chat_message_join_idx_message_date_id_chat_id ON chat_message_join (chat_id, message_date, message_id)"sv,
    "CREATE INDEX message_attachment_join_idx_attachment_id ON message_attachment_join (attachment_id)"sv,
    "CREATE INDEX message_attachment_join_idx_message_id ON message_attachment_join (message_id)"sv,
    "CREATE INDEX chat_handle_join_idx_handle_id ON chat_handle_join (handle_id)"sv,
    "CREATE INDEX chat_recoverable_message_join_message_id_idx ON chat_recoverable_message_join (message_id)"sv,
    "CREATE INDEX attachment_idx_is_sticker ON attachment (is_sticker)"sv,
    R"(CREATE INDEX attachment_idx_purged_attachments_v2 ON attachment (hide_attachment, ck_sync_state, transfer_state)
    WHERE hide_attachment = 0 AND (ck_sync_state = 1 OR ck_sync_state = 4) AND transfer_state = 0)"sv,
    "CREATE INDEX chat_idx_chat_identifier ON chat (chat_identifier)"sv,
    "CREATE INDEX chat_idx_chat_identifier_service_name ON chat (chat_identifier, service_name)"sv,
    "CREATE INDEX chat_idx_chat_room_name_service_name ON chat (room_name, service_name)"sv,
    "CREATE INDEX chat_idx_group_id ON chat (group_id)"sv,
    "CREATE INDEX chat_idx_is_archived ON chat (is_archived)"sv,
};

constexpr std::array triggerStatements{
    R"(CREATE TRIGGER after_insert_on_chat_message_join AFTER INSERT ON chat_message_join
BEGIN
    UPDATE message SET cache_roomnames = (
        SELECT group_concat(c.room_name) FROM chat c INNER JOIN chat_message_join j ON c.ROWID = j.chat_id
        WHERE j.message_id = NEW.message_id)
    WHERE message.ROWID = NEW.message_id;
END)"sv,
    R"(CREATE TRIGGER after_delete_on_chat_message_join AFTER DELETE ON chat_message_join
BEGIN
    UPDATE message SET cache_roomnames = (
        SELECT group_concat(c.room_name) FROM chat c INNER JOIN chat_message_join j ON c.ROWID = j.chat_id
        WHERE j.message_id = OLD.message_id)
    WHERE message.ROWID = OLD.message_id;
    DELETE FROM message WHERE message.ROWID = OLD.message_id
        AND OLD.message_id NOT IN (SELECT chat_message_join.message_id FROM chat_message_join
                                   WHERE chat_message_join.message_id = OLD.message_id LIMIT 1);
END)"sv,
    R"(CREATE TRIGGER after_insert_on_message_attachment_join AFTER INSERT ON message_attachment_join
BEGIN
    UPDATE message SET cache_has_attachments = 1 WHERE message.ROWID = NEW.message_id;
END)"sv,
    R"(CREATE TRIGGER after_delete_on_message_attachment_join AFTER DELETE ON message_attachment_join
BEGIN
    DELETE FROM attachment WHERE attachment.ROWID = OLD.attachment_id
        AND (SELECT 1 FROM message_attachment_join WHERE attachment_id = OLD.attachment_id LIMIT 1) IS NULL;
END)"sv,
    R"(CREATE TRIGGER update_message_date_after_update_on_message AFTER UPDATE OF date ON message
BEGIN
    UPDATE chat_message_join SET message_date = NEW.date
    WHERE message_id = NEW.ROWID AND message_date != NEW.date;
END)"sv,
    R"(CREATE TRIGGER add_to_deleted_messages AFTER DELETE ON message
BEGIN
    INSERT INTO deleted_messages (guid) VALUES (OLD.guid);
END)"sv,
    R"(CREATE TRIGGER add_to_sync_deleted_messages AFTER DELETE ON message
BEGIN
    INSERT INTO sync_deleted_messages (guid, recordID) VALUES (OLD.guid, OLD.ck_record_id);
END)"sv,
    R"(CREATE TRIGGER delete_associated_messages_after_delete_on_message AFTER DELETE ON message
BEGIN
    DELETE FROM message WHERE OLD.associated_message_guid IS NULL AND associated_message_guid IS NOT NULL
        AND guid = OLD.associated_message_guid;
END)"sv,
    R"(CREATE TRIGGER after_delete_on_message AFTER DELETE ON message
BEGIN
    DELETE FROM handle WHERE handle.ROWID = OLD.handle_id
        AND (SELECT 1 FROM chat_handle_join WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE other_handle = OLD.handle_id LIMIT 1) IS NULL;
    SELECT after_delete_message_plugin(OLD.ROWID, OLD.guid);
END)"sv,
    R"(CREATE TRIGGER after_delete_on_chat AFTER DELETE ON chat
BEGIN
    DELETE FROM chat_message_join WHERE chat_id = OLD.ROWID;
END)"sv,
    R"(CREATE TRIGGER after_delete_on_chat_handle_join AFTER DELETE ON chat_handle_join
BEGIN
    DELETE FROM handle WHERE handle.ROWID = OLD.handle_id
        AND (SELECT 1 FROM chat_handle_join WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE other_handle = OLD.handle_id LIMIT 1) IS NULL;
END)"sv,
    R"(CREATE TRIGGER add_to_sync_deleted_attachments AFTER DELETE ON attachment
BEGIN
    INSERT INTO sync_deleted_attachments (guid, recordID) VALUES (OLD.guid, OLD.ck_record_id);
END)"sv,
    R"(CREATE TRIGGER before_delete_on_attachment BEFORE DELETE ON attachment
BEGIN
    SELECT before_delete_attachment_path(OLD.ROWID, OLD.guid);
END)"sv,
    R"(CREATE TRIGGER after_delete_on_attachment AFTER DELETE ON attachment
BEGIN
    SELECT delete_attachment_path(OLD.filename);
END)"sv,
    R"(CREATE TRIGGER verify_chat_insert AFTER INSERT ON chat
BEGIN
    SELECT verify_chat(NEW.ROWID);
END)"sv,
    R"(CREATE TRIGGER verify_chat_update AFTER UPDATE ON chat
BEGIN
    SELECT verify_chat(NEW.ROWID);
END)"sv,
};

constexpr std::array functions{"after_delete_message_plugin", "before_delete_attachment_path", "delete_attachment_path",
                               "verify_chat"};

} // namespace

std::span<const std::string_view> indexes() noexcept
{
    return indexStatements;
}

std::span<const std::string_view> triggers() noexcept
{
    return triggerStatements;
}

std::span<const char* const> messagesFunctions() noexcept
{
    return functions;
}

} // namespace vorn::sampleSchema
