#include "NimbrelExportKit/Archive/ExportJSON.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <random>
#include <span>

namespace vorn {
namespace {

using namespace std::chrono;
using Json = nlohmann::json;

std::string jsonOf(const auto& value)
{
    const ByteBuffer bytes = exportJSON(value);
    return std::string(textOf(bytes));
}

std::string fixture(const std::string& name)
{
    return vorn::testing::readFile(std::filesystem::path(ARCHIVE_FIXTURES) / name);
}

ExportedMessage fullMessage()
{
    ExportedMessage message;
    message.rowID = 4711;
    message.sentAt = 1'772'356'500;
    message.guid = "B5F0E2C4-0000-4000-8000-0123456789AB";
    message.chat = RecordText("iMessage;-;nimbrel@example.org");
    message.text = "See https://example.org/a/b?c=d\tand \"this\" \\o/\nÄrger \U0001F600 \u2028 \x7F \x01\x1F";
    message.service = RecordText("iMessage");
    message.replyToGuid = "A0000000-0000-4000-8000-0123456789AB";
    message.links = {{"https://example.org/a/b?c=d", {}}, {"http://example.com", "A title"}};
    message.attachments = {{"image/jpeg"}, {"application/octet-stream"}};
    message.fromMe = true;
    message.edited = true;
    return message;
}

ExportedMessage bareMessage()
{
    ExportedMessage message;
    message.sentAt = -1;
    message.guid = "g";
    return message;
}

ExportManifest fullManifest()
{
    NimbrelExportResult result;
    result.chats = {{1, "g1", "nimbrel@example.org", "iMessage"},
                    {2, "g2", "+15550100", {}},
                    {3, "g3", "nimbrel@example.org", "SMS"}};
    result.messages = MessageList(2);
    result.skipped.counts = {{"system", 2}, {"reaction", 31}, {"Zebra", 1}, {"a \"b\"/\n", 0}, {"é", 7}};
    return {result, {"1.2.3", "macOS 14.5"}, sys_days(2026y / March / 1) + 9h + 15min};
}

TEST(ExportJSON, WritesTheManifestAsInItsFixture)
{
    EXPECT_EQ(jsonOf(fullManifest()), fixture("manifest.json"));
}

TEST(ExportJSON, WritesTheMessagesAsInTheirFixture)
{
    EXPECT_EQ(jsonOf(std::vector{fullMessage(), bareMessage()}), fixture("messages.json"));
}

TEST(ExportJSON, WritesAnEmptyListForNoMessages)
{
    EXPECT_EQ(jsonOf(std::vector<ExportedMessage>()), "[]");
}

TEST(ExportJSON, WritesNullForAMessageWithoutServiceAndALinkWithoutTitle)
{
    ExportedMessage message;
    message.links = {{"http://a", {}}};
    EXPECT_EQ(
        jsonOf(std::vector{message}),
        R"([{"attachments":[],"chat":"","edited":false,"fromMe":false,"guid":"","links":[{"title":null,"url":"http://a"}],)"
        R"("replyToGuid":null,"sentAt":0,"service":null,"text":""}])");
}

TEST(ExportJSON, TellsAnEmptyServiceFromNone)
{
    ExportedMessage message;
    message.service = RecordText("");
    message.replyToGuid = "";
    const Json json = Json::parse(jsonOf(std::vector{message}));
    EXPECT_EQ(json[0]["service"], "");
    EXPECT_EQ(json[0]["replyToGuid"], "");
}

TEST(ExportJSON, WritesSlashesBare)
{
    ExportedMessage message;
    message.text = "https://example.org/a";
    const std::string json = jsonOf(std::vector{message});
    EXPECT_NE(json.find(R"("text":"https://example.org/a")"), std::string::npos);
    EXPECT_EQ(json.find(R"(\/)"), std::string::npos);
}

TEST(ExportJSON, WritesAnEmptyManifestWithEveryKey)
{
    EXPECT_EQ(jsonOf(ExportManifest({}, {"1.0.0", "macOS 14.0"}, Instant())),
              R"({"agentHandles":[],"chatCount":0,"exportedAt":"1970-01-01T00:00:00Z",)"
              R"("exporter":{"app":"Vorn for Mac","os":"macOS 14.0","version":"1.0.0"},)"
              R"("format":"vorn.nimbrel-imessage","formatVersion":1,"messageCount":0,"skipped":{}})");
}

/// Random results, the same on each run.
class OddResults {
public:
    explicit OddResults(std::uint32_t seed) : random_(seed) {}

    NimbrelExportResult next()
    {
        NimbrelExportResult result;
        for (std::size_t i = below(4); i > 0; --i) result.chats.push_back({1, text(), text(), {}});
        for (std::size_t i = below(6); i > 0; --i) result.skipped.add(text(), number());
        for (std::size_t i = below(20); i > 0; --i) result.messages.push_back(message());
        return result;
    }

    std::string text()
    {
        static constexpr std::array<const char*, 24> odd{"\"",         "\\",
                                                         "/",          "\b",
                                                         "\f",         "\n",
                                                         "\r",         "\t",
                                                         "\x01",       "\x0B",
                                                         "\x1F",       "\x7F",
                                                         "\u0080",     "é",
                                                         "ß",          "\u2028",
                                                         "\u2029",     "\uFEFF",
                                                         "\uFFFD",     "\uFFFF",
                                                         "\U0001F600", "\U0001F468\u200D\U0001F469",
                                                         "\U0010FFFF", "\\u0041"};
        std::string text;
        const std::size_t oddness = below(3) * 10;
        for (std::size_t i = below(4) == 0 ? 0 : below(120); i > 0; --i) {
            if (below(20) < oddness)
                text += odd[below(odd.size())];
            else
                text += static_cast<char>('a' + below(26));
            if (oddness > 0 && below(50) == 0) text += '\0';
        }
        return text;
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::int64_t number()
    {
        return static_cast<std::int64_t>(std::uint64_t{random_()} << 32U | random_()) >> below(64);
    }

    ExportedMessage message()
    {
        ExportedMessage message;
        message.rowID = number();
        message.sentAt = number();
        message.guid = text();
        message.chat = below(3) == 0 ? RecordText() : RecordText(text());
        message.text = text();
        message.service = below(3) == 0 ? RecordText() : RecordText(text());
        if (below(2) == 0) message.replyToGuid = text();
        for (std::size_t i = below(4); i > 0; --i)
            message.links.push_back({text(), below(2) == 0 ? std::optional(text()) : std::nullopt});
        for (std::size_t i = below(4); i > 0; --i) message.attachments.push_back({text()});
        message.fromMe = below(2) == 0;
        message.edited = below(2) == 0;
        return message;
    }

    std::mt19937 random_;
};

template <class Text>
Json orNull(const std::optional<Text>& text)
{
    return text ? Json(std::string(*text)) : Json();
}

Json peerOf(std::span<const ExportedMessage> messages)
{
    Json all = Json::array();
    for (const ExportedMessage& message : messages) {
        Json one{{"guid", std::string(message.guid)},
                 {"chat", std::string(message.chat)},
                 {"fromMe", message.fromMe},
                 {"sentAt", message.sentAt},
                 {"text", std::string(message.text)},
                 {"service", orNull(message.service)},
                 {"edited", message.edited},
                 {"replyToGuid", orNull(message.replyToGuid)},
                 {"links", Json::array()},
                 {"attachments", Json::array()}};
        for (const auto& link : message.links)
            one["links"].push_back(Json{{"url", link.url}, {"title", orNull(link.title)}});
        for (const auto& attachment : message.attachments)
            one["attachments"].push_back(Json{{"mimeType", attachment.mimeType}});
        all.push_back(std::move(one));
    }
    return all;
}

Json peerOf(const ExportManifest& manifest)
{
    Json skipped = Json::object();
    for (const auto& [reason, count] : manifest.skipped.counts) skipped[reason] = count;
    return {
        {"format", "vorn.nimbrel-imessage"},
        {"formatVersion", 1},
        {"exportedAt", manifest.exportedAt},
        {"exporter", {{"app", "Vorn for Mac"}, {"version", manifest.exporter.version}, {"os", manifest.exporter.os}}},
        {"agentHandles", manifest.agentHandles},
        {"chatCount", manifest.chatCount},
        {"messageCount", manifest.messageCount},
        {"skipped", skipped}};
}

TEST(ExportJSON, AgreesWithAnotherWriterOnOddResults)
{
    OddResults odd(20'260'301);
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        const NimbrelExportResult result = odd.next();
        const ExportManifest manifest(result, {odd.text(), odd.text()}, Instant(seconds(round)));

        const std::string messagesJSON = jsonOf(result.messages);
        ASSERT_EQ(Json::parse(messagesJSON), peerOf(std::span(result.messages)));
        ASSERT_EQ(messagesJSON, peerOf(std::span(result.messages)).dump());

        const std::string manifestJSON = jsonOf(manifest);
        ASSERT_EQ(Json::parse(manifestJSON), peerOf(manifest));
        ASSERT_EQ(manifestJSON, peerOf(manifest).dump());
    }
}

} // namespace
} // namespace vorn
