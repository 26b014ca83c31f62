CREATE INDEX message_idx_date ON message (date);
CREATE INDEX message_idx_handle ON message (handle_id, date);
CREATE INDEX message_idx_handle_id ON message (handle_id);
CREATE INDEX message_idx_other_handle ON message (other_handle);
CREATE INDEX message_idx_is_read ON message (is_read, is_from_me, is_finished);
CREATE INDEX message_idx_isRead_isFromMe_itemType ON message (is_read, is_from_me, item_type);
CREATE INDEX message_idx_is_sent_is_from_me_error ON message (is_sent, is_from_me, error);
CREATE INDEX message_idx_failed ON message (is_finished, is_from_me, error);
CREATE INDEX message_idx_was_downgraded ON message (was_downgraded);
CREATE INDEX message_idx_expire_state ON message (expire_state);
CREATE INDEX message_idx_cache_has_attachments ON message (cache_has_attachments);
CREATE INDEX message_idx_associated_message2 ON message (associated_message_guid) WHERE associated_message_guid IS NOT NULL;
CREATE INDEX message_idx_thread_originator_guid ON message (thread_originator_guid) WHERE thread_originator_guid IS NOT NULL;
CREATE INDEX message_idx_schedule_state ON message (schedule_type, schedule_state) WHERE schedule_type != 0;
CREATE INDEX message_idx_is_pending_satellite_send ON message (is_pending_satellite_send) WHERE is_pending_satellite_send != 0;
CREATE INDEX message_idx_needs_relay ON message (needs_relay) WHERE needs_relay != 0;
CREATE INDEX message_idx_date_recovered ON message (date_recovered) WHERE date_recovered != 0;
CREATE INDEX message_idx_undelivered_one_to_one_imessage
    ON message (cache_roomnames, service, is_sent, is_delivered, was_downgraded, item_type)
    WHERE cache_roomnames IS NULL AND service = 'iMessage' AND is_sent = 1 AND is_delivered = 0 AND was_downgraded = 0
      AND item_type == 0;
CREATE INDEX chat_message_join_idx_chat_id ON chat_message_join (chat_id);
CREATE INDEX chat_message_join_idx_message_id_only ON chat_message_join (message_id);
CREATE INDEX chat_message_join_idx_message_date_id_chat_id ON chat_message_join (chat_id, message_date, message_id);
CREATE INDEX message_attachment_join_idx_attachment_id ON message_attachment_join (attachment_id);
CREATE INDEX message_attachment_join_idx_message_id ON message_attachment_join (message_id);
CREATE INDEX chat_handle_join_idx_handle_id ON chat_handle_join (handle_id);
CREATE INDEX chat_recoverable_message_join_message_id_idx ON chat_recoverable_message_join (message_id);
CREATE INDEX attachment_idx_is_sticker ON attachment (is_sticker);
CREATE INDEX attachment_idx_purged_attachments_v2 ON attachment (hide_attachment, ck_sync_state, transfer_state)
    WHERE hide_attachment = 0 AND (ck_sync_state = 1 OR ck_sync_state = 4) AND transfer_state = 0;
CREATE INDEX chat_idx_chat_identifier ON chat (chat_identifier);
CREATE INDEX chat_idx_chat_identifier_service_name ON chat (chat_identifier, service_name);
CREATE INDEX chat_idx_chat_room_name_service_name ON chat (room_name, service_name);
CREATE INDEX chat_idx_group_id ON chat (group_id);
CREATE INDEX chat_idx_is_archived ON chat (is_archived);
