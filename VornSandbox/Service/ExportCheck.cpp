#include "VornSandbox/Service/ExportCheck.h"

#include "Platform/Base/Dates.h"
#include "VornSandbox/Service/ArchiveError.h"
#include "VornSandbox/Service/BoundedJSON.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

/// An object whose keys are exactly those expected; each is asked for by its type.
class Fields {
public:
    Fields(const json& object, std::string name, const std::vector<std::string>& keys)
        : object_(object), name_(std::move(name))
    {
        if (!object.is_object()) throw ArchiveError("The " + name_ + " is no JSON object.");
        for (const auto& key : keys) {
            if (!object.contains(key)) throw ArchiveError("The " + name_ + " has no " + key + ".");
        }
        if (object.size() != keys.size()) throw ArchiveError("The " + name_ + " has keys that nobody knows.");
    }

    std::string text(const char* key) const
    {
        if (!object_.at(key).is_string()) wrong(key);
        return object_.at(key).get<std::string>();
    }
    bool flag(const char* key) const
    {
        if (!object_.at(key).is_boolean()) wrong(key);
        return object_.at(key).get<bool>();
    }
    std::int64_t integer(const char* key) const
    {
        if (!object_.at(key).is_number_integer()) wrong(key);
        return object_.at(key).get<std::int64_t>();
    }
    const json& array(const char* key) const
    {
        if (!object_.at(key).is_array()) wrong(key);
        return object_.at(key);
    }
    const json& object(const char* key) const { return object_.at(key); }
    void textOrNull(const char* key) const
    {
        if (!object_.at(key).is_null()) text(key);
    }

private:
    [[noreturn]] void wrong(const char* key) const
    {
        throw ArchiveError(fmt::format("The {}'s {} has a wrong type.", name_, key));
    }

    const json& object_;
    std::string name_;
};

json parse(std::string_view text, const char* name)
{
    auto document = parseJSON(text);
    if (!document) throw ArchiveError(fmt::format("A {} is no JSON.", name));
    return *std::move(document);
}

void checkExporter(const json& exporter)
{
    const Fields fields(exporter, "exporter", {"app", "os", "version"});
    if (fields.text("app") != "Vorn for Mac") throw ArchiveError("The export was made by another application.");
    if (!fields.text("os").starts_with("macOS ")) throw ArchiveError("The exporter's os is not macOS.");
    if (fields.text("version").empty()) throw ArchiveError("The exporter's version is empty.");
}

void checkTally(const json& skipped)
{
    const bool sound = skipped.is_object() && std::ranges::all_of(skipped.items(), [](const auto& item) {
                           return item.value().is_number_integer() && item.value() >= 0;
                       });
    if (!sound) throw ArchiveError("The manifest's skipped is no tally.");
}

} // namespace

json ExportCheck::readManifest(std::string_view text)
{
    json manifest = parse(text, "manifest");
    const Fields fields(
        manifest, "manifest",
        {"agentHandles", "chatCount", "exportedAt", "exporter", "format", "formatVersion", "messageCount", "skipped"});
    if (fields.text("format") != "vorn.nimbrel-imessage" || fields.integer("formatVersion") != 1) {
        throw ArchiveError("The export's format is not vorn.nimbrel-imessage, version 1.");
    }
    if (!parseInternetDateTime(fields.text("exportedAt"))) throw ArchiveError("The manifest's exportedAt is no time.");
    checkExporter(fields.object("exporter"));
    checkTally(fields.object("skipped"));
    for (const json& handle : fields.array("agentHandles")) {
        if (!handle.is_string()) throw ArchiveError("An agent handle is no text.");
    }
    announcedChats_ = fields.integer("chatCount");
    announcedMessages_ = fields.integer("messageCount");
    return manifest;
}

void ExportCheck::readMessage(std::string_view text)
{
    const json message = parse(text, "message");
    const Fields fields(
        message, "message",
        {"attachments", "chat", "edited", "fromMe", "guid", "links", "replyToGuid", "sentAt", "service", "text"});
    for (const json& link : fields.array("links")) {
        const Fields parts(link, "link", {"title", "url"});
        parts.textOrNull("title");
        parts.text("url");
    }
    for (const json& attachment : fields.array("attachments")) {
        Fields(attachment, "attachment", {"mimeType"}).text("mimeType");
    }
    for (const char* key : {"guid", "text"}) fields.text(key);
    for (const char* key : {"replyToGuid", "service"}) fields.textOrNull(key);
    fields.flag("edited");
    const std::int64_t sentAt = fields.integer("sentAt");
    if (messages_ > 0 && sentAt < lastSentAt_) throw ArchiveError("The messages are not in the order of their times.");
    lastSentAt_ = sentAt;
    chats_.insert(fields.text("chat"));
    prompts_ += fields.flag("fromMe") ? 1 : 0;
    ++messages_;
}

void ExportCheck::finish() const
{
    if (messages_ != announcedMessages_) {
        throw ArchiveError(
            fmt::format("The manifest counts {} messages, but there are {}.", announcedMessages_, messages_));
    }
    if (static_cast<std::int64_t>(chats_.size()) > announcedChats_) {
        throw ArchiveError("The messages come from more chats than the manifest counts.");
    }
}

} // namespace vorn::sandbox
