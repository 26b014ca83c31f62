#include "VornSandbox/SampleHistory/SampleWriter.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vorn {
namespace {

using Value = SampleInsert::Value;

constexpr std::string_view account = "E:sam.rivera@example.com";
constexpr std::string_view accountGUID = "2D6B1C9E-7F40-4C1B-9A55-0C2D8E7F1A34";
constexpr std::string_view ownNumber = "+14155550100";
constexpr std::string_view linkBalloon = "com.apple.messages.URLBalloonProvider";

/// Every message has one. An export does not read it, so only its size matters.
constexpr std::array<std::byte, 102> summary{};

constexpr std::int64_t second = 1'000'000'000; // attachments' dates are in seconds

/// NULL for what the row does not have.
template <class T>
Value orNull(const std::optional<T>& value)
{
    return value ? Value(*value) : Value(nullptr);
}

Value unlessEmpty(std::string_view text)
{
    return text.empty() ? Value(nullptr) : Value(text);
}

Value unlessEmpty(const ByteBuffer& blob)
{
    return blob.empty() ? Value(nullptr) : Value(blob);
}

Value roomOf(const SampleChat& chat)
{
    return chat.isGroup() ? Value(chat.identifier) : Value(nullptr);
}

} // namespace

void SampleWriter::writeCast()
{
    SampleInsert property(database_, "_SqliteDatabaseProperties");
    property.run({{"key", "_ClientVersion"}, {"value", "18026"}});
    property.run({{"key", "_UniqueIdentifier"}, {"value", "6F0C8A1B-3D5E-4B77-9E21-A4C0D7B52F18"}});
    for (const char* counter : {"counter_in_all", "counter_out_all", "counter_last_reset"}) {
        property.run({{"key", counter}, {"value", "0"}});
    }

    SampleInsert handle(database_, "handle");
    for (const auto& [id, service, isAssistant] : cast_.handles) {
        handle.run({{"id", id}, {"country", "us"}, {"service", service}, {"uncanonicalized_id", id}});
    }

    SampleInsert row(database_, "chat");
    SampleInsert member(database_, "chat_handle_join");
    std::int64_t chatID = 0;
    for (const SampleChat& chat : cast_.chats) {
        const std::string groupID = "7A41D0C2-58E6-4B1F-9C03-00000000" + std::to_string(1'000 + ++chatID);
        row.run({{"guid", chat.guid},
                 {"style", chat.style},
                 {"state", 3},
                 {"account_id", accountGUID},
                 {"chat_identifier", chat.identifier},
                 {"service_name", chat.service},
                 {"room_name", roomOf(chat)},
                 {"account_login", account},
                 {"last_addressed_handle", ownNumber},
                 {"display_name", chat.displayName},
                 {"group_id", groupID},
                 {"original_group_id", groupID}});
        for (const std::int64_t handleID : chat.handles) member.run({{"chat_id", chatID}, {"handle_id", handleID}});
    }
}

void SampleWriter::write(const SampleMessage& message)
{
    writeMessage(message);
    chatMessage_.run({{"chat_id", static_cast<std::int64_t>(message.chat) + 1},
                      {"message_id", message.rowID},
                      {"message_date", message.date}});
    for (const SampleAttachment& attachment : message.attachments) writeAttachment(message, attachment);
}

void SampleWriter::writeMessage(const SampleMessage& message)
{
    message_.run({
        {"ROWID", message.rowID},
        {"guid", message.guid},
        {"text", orNull(message.text)},
        {"handle_id", message.handle},
        {"attributedBody", orNull(message.body)},
        {"service", message.service},
        {"date", message.date},
        {"date_read", message.dateRead},
        {"date_delivered", message.dateDelivered},
        {"is_delivered", message.dateDelivered != 0},
        {"is_from_me", message.fromMe},
        {"is_read", message.dateRead != 0},
        {"is_sent", message.fromMe},
        {"has_dd_results", message.hasLink},
        {"was_data_detected", message.hasLink},
        {"cache_has_attachments", !message.attachments.empty()},
        {"cache_roomnames", roomOf(cast_.chats[message.chat])},
        {"is_audio_message", message.isAudio},
        {"item_type", message.itemType},
        {"other_handle", message.otherHandle},
        {"group_title", unlessEmpty(message.groupTitle)},
        {"group_action_type", message.groupActionType},
        {"associated_message_guid", unlessEmpty(message.associatedGuid)},
        {"associated_message_type", message.associatedType},
        {"associated_message_range_length", message.associatedLength},
        {"associated_message_emoji", unlessEmpty(message.associatedEmoji)},
        {"balloon_bundle_id", unlessEmpty(message.payload.empty() ? "" : linkBalloon)},
        {"payload_data", unlessEmpty(message.payload)},
        {"message_summary_info", ByteView(summary)},
        {"reply_to_guid", unlessEmpty(message.replyToGuid)},
        {"thread_originator_guid", unlessEmpty(message.threadOriginatorGuid)},
        {"thread_originator_part", unlessEmpty(message.threadOriginatorPart)},
        {"date_retracted", message.dateRetracted},
        {"date_edited", message.dateEdited},
        {"part_count", message.parts},
        {"account", account},
        {"account_guid", accountGUID},
        {"destination_caller_id", ownNumber},
        {"version", 10},
        {"is_finished", 1},
        {"sort_id", 0},
    });
}

void SampleWriter::writeAttachment(const SampleMessage& message, const SampleAttachment& attachment)
{
    // The folders are named by the guid's last two digits, then by a 0 and its last digit, as Messages spreads its
    // files.
    const std::string& guid = attachment.guid;
    const std::string filename = "~/Library/Messages/Attachments/" + guid.substr(guid.size() - 2) + "/0" +
                                 guid.substr(guid.size() - 1) + "/" + guid + "/" + attachment.transferName;
    attachment_.run({{"ROWID", ++attachments_},
                     {"guid", guid},
                     {"original_guid", guid},
                     {"created_date", message.date / second},
                     {"start_date", message.date / second},
                     {"filename", filename},
                     {"uti", orNull(attachment.uti)},
                     {"mime_type", orNull(attachment.mimeType)},
                     {"transfer_state", 5},
                     {"is_outgoing", message.fromMe},
                     {"transfer_name", attachment.transferName},
                     {"total_bytes", attachment.bytes}});
    messageAttachment_.run({{"message_id", message.rowID}, {"attachment_id", attachments_}});
}

} // namespace vorn
