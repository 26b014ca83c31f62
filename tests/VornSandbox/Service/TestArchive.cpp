#include "tests/VornSandbox/Service/TestArchive.h"

#include <stdexcept>

#include <zlib.h>

namespace vorn::testing {

using nlohmann::json;

namespace {

std::string little(std::uint64_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8U) text += static_cast<char>(value & 0xff);
    return text;
}

std::string deflateRaw(const std::string& content)
{
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, content.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data())); // zlib only reads it
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) throw std::runtime_error("deflate");
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// The fields that the local header and the directory have in common.
std::string description(const std::string& name, const std::string& content, const std::string& packed, bool deflated)
{
    const auto crc = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    return little(20, 2) + little(0x0800, 2) + little(deflated ? 8 : 0, 2) + little(0, 4) + little(crc, 4) +
           little(packed.size(), 4) + little(content.size(), 4) + little(name.size(), 2) + little(0, 2);
}

} // namespace

std::string zipOf(const std::vector<std::pair<std::string, std::string>>& entries, bool deflated)
{
    std::string file;
    std::string directory;
    for (const auto& [name, content] : entries) {
        const std::string packed = deflated ? deflateRaw(content) : content;
        const std::string same = description(name, content, packed, deflated);
        directory += "PK\1\2" + little(20, 2) + same + little(0, 10) + little(file.size(), 4) + name;
        file += "PK\3\4" + same + name + packed;
    }
    return file + directory + "PK\5\6" + little(0, 4) + little(entries.size(), 2) + little(entries.size(), 2) +
           little(directory.size(), 4) + little(file.size(), 4) + little(0, 2);
}

json testManifest(std::size_t messageCount)
{
    return {{"agentHandles", {"+15550102030"}},
            {"chatCount", 1},
            {"exportedAt", "2026-03-01T09:15:00Z"},
            {"exporter", {{"app", "Vorn for Mac"}, {"os", "macOS 14.5"}, {"version", "1.0.0"}}},
            {"format", "vorn.nimbrel-imessage"},
            {"formatVersion", 1},
            {"messageCount", messageCount},
            {"skipped", {{"reaction", 2}}}};
}

json testMessages(std::size_t count)
{
    json messages = json::array();
    for (std::size_t i = 0; i < count; ++i) {
        messages.push_back({{"attachments", {{{"mimeType", "image/heic"}}}},
                            {"chat", "iMessage;-;+15550102030"},
                            {"edited", false},
                            {"fromMe", i % 2 == 0},
                            {"guid", "G-" + std::to_string(i)},
                            {"links", {{{"url", "https://example.com/"}, {"title", nullptr}}}},
                            {"replyToGuid", nullptr},
                            {"sentAt", 1'700'000'000 + i},
                            {"service", "iMessage"},
                            {"text", "Text with \"quotes\", [brackets], {braces} and a \\ " + std::to_string(i)}});
    }
    return messages;
}

std::string archiveOf(const json& messages)
{
    return zipOf({{"vorn-nimbrel-export.json", testManifest(messages.size()).dump()},
                  {"vorn-nimbrel-messages.json", messages.dump()}});
}

} // namespace vorn::testing
