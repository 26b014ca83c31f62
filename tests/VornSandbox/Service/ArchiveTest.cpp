#include "VornSandbox/Service/Archive.h"
#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "VornSandbox/Service/RequestChecks.h"
#include "tests/VornSandbox/Service/TestArchive.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

using namespace sandbox;
using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr auto manifestName = "vorn-nimbrel-export.json";
constexpr auto messagesName = "vorn-nimbrel-messages.json";

/// The bytes as a file.
struct Stored {
    explicit Stored(const std::string& bytes) { writeFile(path, bytes); }
    TemporaryFolder folder;
    std::filesystem::path path = folder / "archive.zip";
};

/// Brackets within brackets.
std::string nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

std::string withMessages(const std::string& messages)
{
    return zipOf({{manifestName, testManifest(1).dump()}, {messagesName, messages}});
}

TEST(ArchiveInspection, ReadsStoredAndDeflatedEntries)
{
    json messages = testMessages(20);
    messages[7]["text"] = std::string(1'000'000, 'x');
    for (const bool deflated : {false, true}) {
        const Stored file(zipOf({{manifestName, testManifest(20).dump()}, {messagesName, messages.dump()}}, deflated));
        EXPECT_EQ(inspectArchive(file.path).finding, "20 messages, 10 from the user");
    }
}

TEST(ArchiveInspection, RefusesEveryCutAndEveryFlippedByteOrReadsItRight)
{
    const std::string whole = archiveOf(testMessages(2));
    const auto read = [&](const std::string& bytes) {
        const Stored file(bytes);
        const ArchiveVerdict verdict = inspectArchive(file.path);
        if (verdict.asChecked.reason == "media_unreadable") return false;
        EXPECT_EQ(verdict.finding, "2 messages, 1 from the user");
        return true;
    };
    EXPECT_TRUE(read(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) EXPECT_FALSE(read(whole.substr(0, length))) << length;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string flipped = whole;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x21);
        read(flipped);
    }
}

TEST(ArchiveInspection, RefusesMessagesThatAreNoArray)
{
    for (const char* text :
         {"", "{}", "1", "[", "[1", "[1,", "[,1]", "[1,]", "[1,,2]", "[1]]", "[1] x", "[{]", "[}]", "[\"]"}) {
        const Stored file(withMessages(text));
        EXPECT_EQ(inspectArchive(file.path).asChecked.reason, "media_unreadable") << text;
        EXPECT_THROW(MessagePages{file.path}, ArchiveError) << text;
    }
}

TEST(ParseJSON, ReadsToADepth)
{
    EXPECT_EQ(parseJSON(R"({"a":[1]})"), json({{"a", {1}}}));
    EXPECT_TRUE(parseJSON(nested(64)));
    EXPECT_FALSE(parseJSON(nested(65)));
    EXPECT_FALSE(parseJSON(nested(1'000'000)));
    for (const char* text : {"", "{", "[1", "{\"a\"}", "1e999", "\xff"}) EXPECT_FALSE(parseJSON(text)) << text;
}

TEST(ArchiveInspection, ApprovesAnExport)
{
    const Stored file(archiveOf(testMessages(20)));
    const ArchiveVerdict verdict = inspectArchive(file.path);
    EXPECT_EQ(verdict.asChecked, (Outcome{.status = "approved", .reason = {}}));
    EXPECT_EQ(verdict.finding, "20 messages, 10 from the user");
}

TEST(ArchiveInspection, WantsTenMessagesOfTheUsersOwn)
{
    const Stored file(archiveOf(testMessages(18)));
    EXPECT_EQ(inspectArchive(file.path).asChecked.reason, "export_too_small");
}

TEST(ArchiveInspection, ReadsWhatTheExportWrites)
{
    const TemporaryFolder folder;
    NimbrelExportResult result;
    result.chats.push_back({.rowID = 1, .guid = "chat", .handle = "+15550102030", .service = "iMessage"});
    const ExporterInfo exporter{.version = "1.0.0", .os = "macOS 14.5"};
    NimbrelArchiveBuilder::writeArchive(result, exporter, folder / "a.zip",
                                        Instant(std::chrono::seconds(1'772'356'500)));
    const ArchiveVerdict verdict = inspectArchive(folder / "a.zip");
    EXPECT_EQ(verdict.finding, "0 messages, 0 from the user");
}

TEST(ArchiveInspection, SaysWhatIsWrong)
{
    const json good = testMessages(2);
    const auto changed = [&](const char* key, const json& value) {
        json messages = good;
        messages[1][key] = value;
        return archiveOf(messages);
    };
    const auto manifest = [&](const char* key, const json& value) {
        json document = testManifest(2);
        document[key] = value;
        return zipOf({{manifestName, document.dump()}, {messagesName, good.dump()}});
    };
    json without = good;
    without[0].erase("service");
    const struct {
        const char* name;
        std::string archive;
        const char* finding;
    } cases[]{
        {"no ZIP file", std::string(100, 'x'), "The archive cannot be opened: Not a zip archive."},
        {"another order", zipOf({{messagesName, "[]"}, {manifestName, testManifest(0).dump()}}),
         "does not hold the manifest"},
        {"a third entry", zipOf({{manifestName, "{}"}, {messagesName, "[]"}, {"more", ""}}), "and nothing else"},
        {"messages as an object", zipOf({{manifestName, testManifest(0).dump()}, {messagesName, "{}"}}),
         "not a JSON array"},
        {"another format", manifest("format", "other"), "format"},
        {"another version", manifest("formatVersion", 2), "version 1"},
        {"no time", manifest("exportedAt", "yesterday"), "exportedAt"},
        {"a key too many", manifest("extra", 1), "unknown keys"},
        {"a wrong count", manifest("messageCount", 3), "counts 3 messages, but there are 2"},
        {"too few chats", manifest("chatCount", 0), "more chats"},
        {"a tally of texts", manifest("skipped", {{"reaction", "2"}}), "skipped"},
        {"a number for a text", changed("text", 1), "text has a wrong type"},
        {"null for a text", changed("guid", nullptr), "guid has a wrong type"},
        {"a fraction of a second", changed("sentAt", 1.5), "sentAt has a wrong type"},
        {"an earlier message", changed("sentAt", 1), "order of their times"},
        {"a link without title", changed("links", {{{"url", "https://example.com"}}}), "link has no title"},
        {"a message without service", archiveOf(without), "message has no service"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        const Stored file(test.archive);
        const ArchiveVerdict verdict = inspectArchive(file.path);
        EXPECT_EQ(verdict.asChecked.reason, "media_unreadable");
        EXPECT_THAT(verdict.finding, HasSubstr(test.finding));
    }
}

TEST(MessagePages, FindTheLastPageOfALongHistory)
{
    const Stored file(archiveOf(testMessages(5001)));
    const MessagePages pages(file.path);
    EXPECT_EQ(pages.count(), 5001);
    EXPECT_EQ(pages.page(0).size(), 50U);
    EXPECT_EQ(pages.page(100).size(), 1U);
    EXPECT_EQ(pages.page(100)[0], testMessages(5001)[5000]);
    EXPECT_TRUE(pages.page(101).empty());
    EXPECT_TRUE(pages.page(-1).empty());
}

TEST(MessagePages, BearMessagesThatAreNone)
{
    const json messages{nullptr, 1, "text", json::array({1, 2}), {{"text", 5}}};
    const Stored file(archiveOf(messages));
    EXPECT_EQ(MessagePages(file.path).page(0), messages);
}

TEST(MessagePages, RefuseMessagesThatAreNestedTooDeeply)
{
    const Stored file(withMessages("[" + nested(1'000'000) + "]"));
    EXPECT_THROW(MessagePages{file.path}, ArchiveError);
}

TEST(MessagePages, AreShownWithoutAManifestThatCannotBeRead)
{
    for (const std::string& manifest : {std::string("{"), nested(100'000)}) {
        const Stored file(zipOf({{manifestName, manifest}, {messagesName, testMessages(3).dump()}}));
        const MessagePages pages(file.path);
        EXPECT_TRUE(pages.manifest().is_null());
        EXPECT_EQ(pages.count(), 3);
    }
}

TEST(MessagePages, UnpackNoManifestOfAnySize)
{
    const Stored file(zipOf({{manifestName, std::string(2'000'000, ' ')}, {messagesName, "[]"}}));
    EXPECT_THROW(MessagePages{file.path}, ArchiveError);
}

TEST(MessagePages, LeaveNoFileWithANameBehind)
{
    const Stored file(archiveOf(testMessages(5000)));
    const MessagePages pages(file.path);
    EXPECT_EQ(pages.count(), 5000);
    EXPECT_THAT(file.folder.names(), ElementsAre("archive.zip"));
}

TEST(MessagePages, BearSoManyBracketsAndNoMore)
{
    for (const std::string& element : {nested(64), '"' + std::string(1000, '[') + '"'}) { // in a text they are letters
        const Stored file(withMessages("[" + element + "]"));
        EXPECT_EQ(MessagePages(file.path).page(0)[0], json::parse(element));
    }
    const Stored file(withMessages("[" + nested(65) + "]"));
    EXPECT_THROW(MessagePages{file.path}, ArchiveError);
}

TEST(MessagePages, OfNoMessagesAreEmpty)
{
    const Stored file(archiveOf(testMessages(0)));
    EXPECT_TRUE(MessagePages(file.path).page(0).empty());
}

} // namespace
} // namespace vorn::testing
