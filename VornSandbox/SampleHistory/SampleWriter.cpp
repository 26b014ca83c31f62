#include "VornSandbox/SampleHistory/SampleWriter.h"

#include <string>
#include <string_view>

namespace vorn {
namespace {

constexpr std::string_view account = "E:sam.rivera@example.com";
constexpr std::string_view accountGUID = "2D6B1C9E-7F40-4C1B-9A55-0C2D8E7F1A34";
constexpr std::string_view ownNumber = "+14155550100";

// What is left out keeps its default. Each line of values belongs to the line of names with the same place.
constexpr std::string_view insertMessage = R"(INSERT INTO message (
    ROWID, guid, text, handle_id, attributedBody, service, date, date_read, date_delivered, is_delivered, is_from_me,
    is_read, is_sent, has_dd_results, was_data_detected, cache_has_attachments, cache_roomnames, is_audio_message,
    item_type, other_handle, group_title, group_action_type, associated_message_guid, associated_message_type,
    associated_message_range_length, associated_message_emoji, balloon_bundle_id, payload_data, message_summary_info,
    reply_to_guid, thread_originator_guid, thread_originator_part, date_retracted, date_edited, part_count,
    account, account_guid, destination_caller_id, version, is_finished, sort_id)
VALUES (
    ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11,
    ?12, ?13, ?14, ?14, ?15, ?16, ?17,
    ?18, ?19, ?20, ?21, ?22, ?23,
    ?24, ?25, ?26, ?27, ?28,
    ?29, ?30, ?31, ?32, ?33, ?34,
    ?35, ?36, ?37, 10, 1, 0))";

constexpr std::string_view insertAttachment = R"(INSERT INTO attachment (
    ROWID, guid, original_guid, created_date, start_date, filename, uti, mime_type, transfer_state, is_outgoing,
    transfer_name, total_bytes)
VALUES (?1, ?2, ?2, ?3, ?3, ?4, ?5, ?6, 5, ?7, ?8, ?9))";

constexpr std::string_view insertChat = R"(INSERT INTO chat (
    guid, style, state, account_id, chat_identifier, service_name, room_name, account_login, last_addressed_handle,
    display_name, group_id, original_group_id)
VALUES (?1, ?2, 3, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?10))";

/// NULL for what the row does not have.
template <class T>
std::optional<T> unlessEmpty(const T& value)
{
    return value.empty() ? std::nullopt : std::optional<T>(value);
}

std::optional<ByteView> viewUnlessEmpty(const ByteBuffer& value)
{
    return unlessEmpty(ByteView(value));
}

std::optional<std::string_view> textUnlessEmpty(std::string_view value)
{
    return unlessEmpty(value);
}

/// Messages keeps seconds here.
constexpr std::int64_t second = 1'000'000'000;

} // namespace

SampleWriter::SampleWriter(SampleDatabase& database, const SampleCast& cast)
    : database_(database), cast_(cast), message_(database, insertMessage),
      chatMessage_(database, "INSERT INTO chat_message_join (chat_id, message_id, message_date) VALUES (?1, ?2, ?3)"),
      attachment_(database, insertAttachment),
      messageAttachment_(database, "INSERT INTO message_attachment_join (message_id, attachment_id) VALUES (?1, ?2)")
{
}

void SampleWriter::writeCast()
{
    SampleStatement property(database_, "INSERT INTO _SqliteDatabaseProperties (key, value) VALUES (?1, ?2)");
    property.run("_ClientVersion", "18026");
    property.run("_UniqueIdentifier", "6F0C8A1B-3D5E-4B77-9E21-A4C0D7B52F18");
    property.run("counter_in_all", "0");
    property.run("counter_out_all", "0");
    property.run("counter_last_reset", "0");

    SampleStatement handle(database_,
                           "INSERT INTO handle (id, country, service, uncanonicalized_id) VALUES (?1, 'us', ?2, ?1)");
    for (const SampleHandle& each : cast_.handles) handle.run(each.id, each.service);

    SampleStatement chat(database_, insertChat);
    SampleStatement member(database_, "INSERT INTO chat_handle_join (chat_id, handle_id) VALUES (?1, ?2)");
    std::int64_t chatID = 0;
    for (const SampleChat& each : cast_.chats) {
        const auto room = each.isGroup() ? std::optional(std::string_view(each.identifier)) : std::nullopt;
        const std::string groupID = "7A41D0C2-58E6-4B1F-9C03-00000000" + std::to_string(1'000 + ++chatID);
        chat.run(each.guid, each.style, accountGUID, each.identifier, each.service, room, account, ownNumber,
                 each.displayName, groupID);
        for (const std::int64_t handleID : each.handles) member.run(chatID, handleID);
    }
}

void SampleWriter::write(const SampleMessage& message)
{
    writeMessage(message);
    chatMessage_.run(static_cast<std::int64_t>(message.chat) + 1, message.rowID, message.date);
    for (const SampleAttachment& attachment : message.attachments) writeAttachment(message, attachment);
}

void SampleWriter::writeMessage(const SampleMessage& message)
{
    const SampleChat& chat = cast_.chats[message.chat];
    const auto room = chat.isGroup() ? std::optional(std::string_view(chat.identifier)) : std::nullopt;
    const auto balloon =
        message.payload.empty() ? std::nullopt : std::optional("com.apple.messages.URLBalloonProvider");
    message_.run(message.rowID, message.guid, message.text, message.handle, message.body, message.service, message.date,
                 message.dateRead, message.dateDelivered, message.dateDelivered != 0, message.fromMe,
                 message.dateRead != 0, message.fromMe, message.hasLink, !message.attachments.empty(), room,
                 message.isAudio, message.itemType, message.otherHandle, textUnlessEmpty(message.groupTitle),
                 message.groupActionType, textUnlessEmpty(message.associatedGuid), message.associatedType,
                 message.associatedLength, textUnlessEmpty(message.associatedEmoji), balloon,
                 viewUnlessEmpty(message.payload), viewUnlessEmpty(message.summaryInfo),
                 textUnlessEmpty(message.replyToGuid), textUnlessEmpty(message.threadOriginatorGuid),
                 textUnlessEmpty(message.threadOriginatorPart), message.dateRetracted, message.dateEdited,
                 message.parts, account, accountGUID, ownNumber);
}

void SampleWriter::writeAttachment(const SampleMessage& message, const SampleAttachment& attachment)
{
    // The two folders are the first and last digits of the guid's last block, as Messages spreads its files.
    const std::string& guid = attachment.guid;
    const std::string filename = "~/Library/Messages/Attachments/" + guid.substr(guid.size() - 2) + "/0" +
                                 guid.substr(guid.size() - 1) + "/" + guid + "/" + attachment.transferName;
    attachment_.run(++attachments_, guid, message.date / second, filename, attachment.uti, attachment.mimeType,
                    message.fromMe, attachment.transferName, attachment.bytes);
    messageAttachment_.run(message.rowID, attachments_);
}

} // namespace vorn
