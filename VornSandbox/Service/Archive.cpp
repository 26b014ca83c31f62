#include "VornSandbox/Service/Archive.h"

#include "Platform/Base/Dates.h"
#include "Platform/Base/Owned.h"
#include "VornSandbox/Service/RequestChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <istream>
#include <iterator>
#include <set>
#include <streambuf>
#include <string>
#include <utility>

#include <zip.h>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr auto manifestName = "vorn-nimbrel-export.json";
constexpr auto messagesName = "vorn-nimbrel-messages.json";
constexpr std::int64_t fewestPrompts = 10;

// A small file may unpack to gigabytes. A genuine message with all its links is far smaller, and nested three levels
// deep.
constexpr std::size_t largestManifest = std::size_t{1024} * 1024;
constexpr std::size_t largestMessage = std::size_t{64} * 1024 * 1024;
constexpr int deepestMessage = 64;

using Zip = Owned<zip_t, zip_discard>;

Zip openZip(const std::filesystem::path& file)
{
    int code = 0;
    Zip zip(zip_open(file.c_str(), ZIP_RDONLY, &code));
    if (zip) return zip;
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const std::string reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    throw ArchiveError("The archive cannot be opened: " + reason + ".");
}

std::vector<std::string> namesIn(const Zip& zip)
{
    std::vector<std::string> names;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip.get(), 0); ++i) {
        const char* name = zip_get_name(zip.get(), static_cast<zip_uint64_t>(i), ZIP_FL_ENC_RAW);
        names.emplace_back(name == nullptr ? "" : name);
    }
    return names;
}

/// The bytes of an entry; libzip verifies their checksum at the end. Throws `ArchiveError` if one `item` has more than
/// `largest` bytes.
class Entry : public std::streambuf {
public:
    Entry(const Zip& zip, const char* name, const char* item, std::size_t largest)
        : file_(zip_fopen(zip.get(), name, ZIP_FL_ENC_RAW)), name_(name), item_(item), largest_(largest)
    {
        if (!file_) throw ArchiveError("The entry " + name_ + " cannot be read: " + zip_strerror(zip.get()) + ".");
    }

    void beginItem() { taken_ = 0; }

protected:
    int_type underflow() override
    {
        const zip_int64_t count = zip_fread(file_.get(), piece_.data(), piece_.size());
        if (count < 0) {
            throw ArchiveError("The entry " + name_ + " is damaged: " + zip_file_strerror(file_.get()) + ".");
        }
        taken_ += static_cast<std::size_t>(count);
        if (taken_ > largest_) throw ArchiveError(std::string(item_) + " is too large.");
        setg(piece_.data(), piece_.data(), piece_.data() + count);
        return count == 0 ? traits_type::eof() : traits_type::to_int_type(piece_.front());
    }

private:
    Owned<zip_file_t, zip_fclose> file_;
    std::string name_;
    const char* item_;
    std::size_t largest_;
    std::size_t taken_ = 0;
    std::array<char, std::size_t{64} * 1024> piece_{};
};

std::optional<json> manifestOf(const Zip& zip)
{
    Entry entry(zip, manifestName, "The manifest", largestManifest);
    return parseJSON(std::string(std::istreambuf_iterator(&entry), {}));
}

/// Calls `onMessage` with each message in turn; only one is held at a time.
void readMessages(const Zip& zip, const std::function<void(json&& message)>& onMessage)
{
    using Event = json::parse_event_t;
    Entry entry(zip, messagesName, "A message", largestMessage);
    const auto watch = [&](int depth, Event event, json& value) {
        const bool opens = event == Event::object_start || event == Event::array_start;
        if (opens && depth > deepestMessage) throw ArchiveError("A message is nested too deeply.");
        if (depth == 0 && event != Event::array_start && event != Event::array_end) {
            throw ArchiveError("The messages are not a JSON array.");
        }
        if (depth != 1 || opens) return true;
        entry.beginItem();
        onMessage(std::move(value));
        return false; // leaves it out of the array
    };
    std::istream stream(&entry);
    if (json::parse(stream, watch, false).is_discarded()) throw ArchiveError("The messages are not JSON.");
}

using Is = bool (*)(const json&);
constexpr Is isText = [](const json& value) { return value.is_string(); };
constexpr Is isTextOrNull = [](const json& value) { return value.is_string() || value.is_null(); };
constexpr Is isInteger = [](const json& value) { return value.is_number_integer(); };
constexpr Is isFlag = [](const json& value) { return value.is_boolean(); };
constexpr Is isArray = [](const json& value) { return value.is_array(); };
constexpr Is isObject = [](const json& value) { return value.is_object(); };

/// Throws unless `object` has exactly these keys, each with a value of its type.
void require(const json& object, const std::string& name, std::initializer_list<std::pair<const char*, Is>> fields)
{
    if (!object.is_object()) throw ArchiveError("The " + name + " is not a JSON object.");
    for (const auto& [key, is] : fields) {
        const auto found = object.find(key);
        if (found == object.end()) throw ArchiveError("The " + name + " has no " + key + ".");
        if (!is(*found)) throw ArchiveError(fmt::format("The {}'s {} has a wrong type.", name, key));
    }
    if (object.size() != fields.size()) throw ArchiveError("The " + name + " has unknown keys.");
}

void checkExporter(const json& exporter)
{
    require(exporter, "exporter", {{"app", isText}, {"os", isText}, {"version", isText}});
    if (exporter["app"] != "Vorn for Mac") throw ArchiveError("The export was made by another application.");
    if (!exporter["os"].get<std::string>().starts_with("macOS ")) {
        throw ArchiveError("The exporter's os is not macOS.");
    }
    if (exporter["version"].get<std::string>().empty()) throw ArchiveError("The exporter's version is empty.");
}

/// Throws unless this is a manifest of "vorn.nimbrel-imessage", version 1.
void checkManifest(const json& manifest)
{
    require(manifest, "manifest",
            {{"agentHandles", isArray},
             {"chatCount", isInteger},
             {"exportedAt", isText},
             {"exporter", isObject},
             {"format", isText},
             {"formatVersion", isInteger},
             {"messageCount", isInteger},
             {"skipped", isObject}});
    if (manifest["format"] != "vorn.nimbrel-imessage" || manifest["formatVersion"] != 1) {
        throw ArchiveError("The export's format is not vorn.nimbrel-imessage, version 1.");
    }
    if (!parseInternetDateTime(manifest["exportedAt"].get<std::string>())) {
        throw ArchiveError("The manifest's exportedAt is not a time.");
    }
    checkExporter(manifest["exporter"]);
    for (const json& count : manifest["skipped"]) {
        if (!isInteger(count) || count < 0) throw ArchiveError("The manifest's skipped is not a tally.");
    }
    if (!std::ranges::all_of(manifest["agentHandles"], isText)) throw ArchiveError("An agent handle is not text.");
}

/// Checks and counts messages.
struct Tally {
    std::int64_t messages = 0;
    std::int64_t prompts = 0; ///< sent by the user
    std::int64_t lastSentAt = 0;
    std::set<std::string> chats;

    void add(const json& message)
    {
        require(message, "message",
                {{"attachments", isArray},
                 {"chat", isText},
                 {"edited", isFlag},
                 {"fromMe", isFlag},
                 {"guid", isText},
                 {"links", isArray},
                 {"replyToGuid", isTextOrNull},
                 {"sentAt", isInteger},
                 {"service", isTextOrNull},
                 {"text", isText}});
        for (const json& link : message["links"]) require(link, "link", {{"title", isTextOrNull}, {"url", isText}});
        for (const json& attachment : message["attachments"]) require(attachment, "attachment", {{"mimeType", isText}});
        const auto sentAt = message["sentAt"].get<std::int64_t>();
        if (messages++ > 0 && sentAt < lastSentAt) {
            throw ArchiveError("The messages are not in the order of their times.");
        }
        lastSentAt = sentAt;
        prompts += message["fromMe"].get<bool>() ? 1 : 0;
        chats.insert(message["chat"].get<std::string>());
    }
};

Tally readWhole(const std::filesystem::path& archive)
{
    const Zip zip = openZip(archive);
    if (namesIn(zip) != std::vector<std::string>{manifestName, messagesName}) {
        throw ArchiveError("The archive does not hold the manifest and then the messages, and nothing else.");
    }
    const auto manifest = manifestOf(zip);
    if (!manifest) throw ArchiveError("The manifest is not JSON.");
    checkManifest(*manifest);
    Tally tally;
    readMessages(zip, [&](const json& message) { tally.add(message); });
    if (manifest->at("messageCount") != tally.messages) {
        throw ArchiveError(fmt::format("The manifest counts {} messages, but there are {}.",
                                       manifest->at("messageCount").dump(), tally.messages));
    }
    if (manifest->at("chatCount") < tally.chats.size()) {
        throw ArchiveError("The messages come from more chats than the manifest counts.");
    }
    return tally;
}

} // namespace

ArchiveVerdict inspectArchive(const std::filesystem::path& archive)
{
    try {
        const Tally tally = readWhole(archive);
        const std::string finding = fmt::format("{} message{}, {} from the user", tally.messages,
                                                tally.messages == 1 ? "" : "s", tally.prompts);
        if (tally.prompts < fewestPrompts) {
            return {.asChecked = {.status = "rejected", .reason = "export_too_small"}, .finding = finding};
        }
        return {.asChecked = {.status = "approved", .reason = {}}, .finding = finding};
    } catch (const ArchiveError& error) {
        return {.asChecked = {.status = "rejected", .reason = "media_unreadable"}, .finding = error.what()};
    }
}

MessagePages::MessagePages(const std::filesystem::path& archive) : pages_("", SQLiteDatabase::Mode::create)
{
    const Zip zip = openZip(archive);
    manifest_ = manifestOf(zip).value_or(nullptr);
    pages_.execute("CREATE TABLE page(number INTEGER PRIMARY KEY, messages TEXT NOT NULL); BEGIN");
    json page = json::array();
    const auto keep = [&] {
        pages_.run("INSERT INTO page VALUES (?, ?)", {(count_ - 1) / perPage, page.dump()});
        page.clear();
    };
    readMessages(zip, [&](json&& message) {
        page.push_back(std::move(message));
        if (++count_ % perPage == 0) keep();
    });
    if (!page.empty()) keep();
    pages_.execute("COMMIT");
}

json MessagePages::page(std::int64_t page) const
{
    json messages = json::array();
    pages_.query("SELECT messages FROM page WHERE number = ?", {page},
                 [&](const SQLiteRow& row) { messages = json::parse(row.text(0).value_or("[]")); });
    return messages;
}

} // namespace vorn::sandbox
