CREATE TRIGGER after_insert_on_chat_message_join AFTER INSERT ON chat_message_join
BEGIN
    UPDATE message SET cache_roomnames = (
        SELECT group_concat(c.room_name) FROM chat c INNER JOIN chat_message_join j ON c.ROWID = j.chat_id
        WHERE j.message_id = NEW.message_id)
    WHERE message.ROWID = NEW.message_id;
END;
CREATE TRIGGER after_delete_on_chat_message_join AFTER DELETE ON chat_message_join
BEGIN
    UPDATE message SET cache_roomnames = (
        SELECT group_concat(c.room_name) FROM chat c INNER JOIN chat_message_join j ON c.ROWID = j.chat_id
        WHERE j.message_id = OLD.message_id)
    WHERE message.ROWID = OLD.message_id;
    DELETE FROM message WHERE message.ROWID = OLD.message_id
        AND OLD.message_id NOT IN (SELECT chat_message_join.message_id FROM chat_message_join
                                   WHERE chat_message_join.message_id = OLD.message_id LIMIT 1);
END;
CREATE TRIGGER after_insert_on_message_attachment_join AFTER INSERT ON message_attachment_join
BEGIN
    UPDATE message SET cache_has_attachments = 1 WHERE message.ROWID = NEW.message_id;
END;
CREATE TRIGGER after_delete_on_message_attachment_join AFTER DELETE ON message_attachment_join
BEGIN
    DELETE FROM attachment WHERE attachment.ROWID = OLD.attachment_id
        AND (SELECT 1 FROM message_attachment_join WHERE attachment_id = OLD.attachment_id LIMIT 1) IS NULL;
END;
CREATE TRIGGER update_message_date_after_update_on_message AFTER UPDATE OF date ON message
BEGIN
    UPDATE chat_message_join SET message_date = NEW.date
    WHERE message_id = NEW.ROWID AND message_date != NEW.date;
END;
CREATE TRIGGER add_to_deleted_messages AFTER DELETE ON message
BEGIN
    INSERT INTO deleted_messages (guid) VALUES (OLD.guid);
END;
CREATE TRIGGER add_to_sync_deleted_messages AFTER DELETE ON message
BEGIN
    INSERT INTO sync_deleted_messages (guid, recordID) VALUES (OLD.guid, OLD.ck_record_id);
END;
CREATE TRIGGER delete_associated_messages_after_delete_on_message AFTER DELETE ON message
BEGIN
    DELETE FROM message WHERE OLD.associated_message_guid IS NULL AND associated_message_guid IS NOT NULL
        AND guid = OLD.associated_message_guid;
END;
CREATE TRIGGER after_delete_on_message AFTER DELETE ON message
BEGIN
    DELETE FROM handle WHERE handle.ROWID = OLD.handle_id
        AND (SELECT 1 FROM chat_handle_join WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE other_handle = OLD.handle_id LIMIT 1) IS NULL;
    SELECT after_delete_message_plugin(OLD.ROWID, OLD.guid);
END;
CREATE TRIGGER after_delete_on_chat AFTER DELETE ON chat
BEGIN
    DELETE FROM chat_message_join WHERE chat_id = OLD.ROWID;
END;
CREATE TRIGGER after_delete_on_chat_handle_join AFTER DELETE ON chat_handle_join
BEGIN
    DELETE FROM handle WHERE handle.ROWID = OLD.handle_id
        AND (SELECT 1 FROM chat_handle_join WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE handle_id = OLD.handle_id LIMIT 1) IS NULL
        AND (SELECT 1 FROM message WHERE other_handle = OLD.handle_id LIMIT 1) IS NULL;
END;
CREATE TRIGGER add_to_sync_deleted_attachments AFTER DELETE ON attachment
BEGIN
    INSERT INTO sync_deleted_attachments (guid, recordID) VALUES (OLD.guid, OLD.ck_record_id);
END;
CREATE TRIGGER before_delete_on_attachment BEFORE DELETE ON attachment
BEGIN
    SELECT before_delete_attachment_path(OLD.ROWID, OLD.guid);
END;
CREATE TRIGGER after_delete_on_attachment AFTER DELETE ON attachment
BEGIN
    SELECT delete_attachment_path(OLD.filename);
END;
CREATE TRIGGER verify_chat_insert AFTER INSERT ON chat
BEGIN
    SELECT verify_chat(NEW.ROWID);
END;
CREATE TRIGGER verify_chat_update AFTER UPDATE ON chat
BEGIN
    SELECT verify_chat(NEW.ROWID);
END;
