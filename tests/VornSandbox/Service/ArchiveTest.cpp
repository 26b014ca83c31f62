#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "VornSandbox/Service/ArchiveError.h"
#include "VornSandbox/Service/ArchiveInspection.h"
#include "VornSandbox/Service/BoundedJSON.h"
#include "VornSandbox/Service/ElementScanner.h"
#include "VornSandbox/Service/MessagePages.h"
#include "VornSandbox/Service/ZipArchive.h"
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

std::string contentOf(const ZipArchive& zip, std::size_t entry)
{
    std::string content;
    zip.read(zip.entries().at(entry), [&](std::string_view piece) { content += piece; });
    return content;
}

std::vector<std::string> elementsOf(const std::string& text, std::size_t pieceSize)
{
    std::vector<std::string> elements;
    ElementScanner scanner([&](std::string_view element) { elements.emplace_back(element); });
    for (std::size_t at = 0; at < text.size(); at += pieceSize)
        scanner.take(std::string_view(text).substr(at, pieceSize));
    scanner.finish();
    return elements;
}

TEST(ZipArchive, ReadsStoredAndDeflatedEntries)
{
    const std::string large(1'000'000, 'x');
    for (const bool deflated : {false, true}) {
        const Stored file(zipOf({{"one", "content"}, {"two", large}, {"three", ""}}, deflated));
        const ZipArchive zip(file.path);
        EXPECT_EQ(zip.entries().at(1).name, "two");
        EXPECT_EQ(contentOf(zip, 0), "content");
        EXPECT_EQ(contentOf(zip, 1), large);
        EXPECT_EQ(contentOf(zip, 2), "");
    }
}

TEST(ZipArchive, RefusesEveryCutAndEveryFlippedByteOrReadsItRight)
{
    const std::string whole = zipOf({{"a", "content of some length"}, {"b", std::string(300, 'y')}});
    const std::vector<std::string> right{"content of some length", std::string(300, 'y')};
    const auto readAll = [&](const std::string& bytes) {
        const Stored file(bytes);
        try {
            const ZipArchive zip(file.path);
            for (std::size_t i = 0; i < zip.entries().size(); ++i) EXPECT_EQ(contentOf(zip, i), right.at(i));
        } catch (const ArchiveError&) {
            return false;
        }
        return true;
    };
    EXPECT_TRUE(readAll(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(readAll(whole.substr(0, length))) << length;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string flipped = whole;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x21);
        readAll(flipped);
    }
}

TEST(ElementScanner, CutsWhereElementsEndWhateverThePieces)
{
    const std::string text = R"( [ {"a":"],}\"\\"} , [1,[2]] ,"x,]", 3 ] )";
    for (const std::size_t size : {1U, 2U, 3U, 7U, 100U}) {
        EXPECT_THAT(elementsOf(text, size), ElementsAre(R"({"a":"],}\"\\"} )", "[1,[2]] ", "\"x,]\"", "3 ")) << size;
    }
    EXPECT_THAT(elementsOf("[]", 1), ElementsAre());
}

TEST(ElementScanner, RefusesWhatIsNoArray)
{
    for (const char* text :
         {"", "{}", "[", "[1", "[1,", "[,1]", "[1,]", "[1,,2]", "[1]]", "[1] x", "[{]", "[}]", "[\"]"}) {
        EXPECT_THROW(elementsOf(text, 1), ArchiveError) << text;
    }
}

/// Brackets within brackets.
std::string nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(ElementScanner, BearsSoManyBracketsAndNoMore)
{
    EXPECT_EQ(elementsOf("[" + nested(64) + "]", 7).front(), nested(64));
    EXPECT_THROW(elementsOf("[" + nested(65) + "]", 7), ArchiveError);
    EXPECT_EQ(elementsOf("[\"" + std::string(1000, '[') + "\"]", 7).size(), 1U); // in a text they are only letters
}

TEST(BoundedJSON, IsReadToADepth)
{
    EXPECT_EQ(parseJSON(R"({"a":[1]})"), json({{"a", {1}}}));
    EXPECT_TRUE(parseJSON(nested(64)));
    EXPECT_FALSE(parseJSON(nested(65)));
    EXPECT_TRUE(parseJSON(nested(65), 65));
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
        {"no ZIP file", std::string(100, 'x'), "has no directory"},
        {"another order", zipOf({{messagesName, "[]"}, {manifestName, testManifest(0).dump()}}),
         "does not hold the manifest"},
        {"a third entry", zipOf({{manifestName, "{}"}, {messagesName, "[]"}, {"more", ""}}), "and nothing else"},
        {"messages as an object", zipOf({{manifestName, testManifest(0).dump()}, {messagesName, "{}"}}),
         "no JSON array"},
        {"another format", manifest("format", "other"), "format"},
        {"another version", manifest("formatVersion", 2), "version 1"},
        {"no time", manifest("exportedAt", "yesterday"), "exportedAt"},
        {"a key too many", manifest("extra", 1), "keys that nobody knows"},
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
    const MessagePages pages(file.path, file.folder / "messages.json");
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
    EXPECT_EQ(MessagePages(file.path, file.folder / "messages.json").page(0), messages);
}

TEST(MessagePages, RefuseMessagesThatAreNestedTooDeeply)
{
    const Stored file(zipOf({{manifestName, testManifest(1).dump()}, {messagesName, "[" + nested(1'000'000) + "]"}}));
    EXPECT_THROW(MessagePages(file.path, file.folder / "messages.json"), ArchiveError);
    EXPECT_THAT(file.folder.names(), ElementsAre("archive.zip"));
}

TEST(MessagePages, AreShownWithoutAManifestThatCannotBeRead)
{
    for (const std::string& manifest : {std::string("{"), nested(100'000)}) {
        const Stored file(zipOf({{manifestName, manifest}, {messagesName, testMessages(3).dump()}}));
        const MessagePages pages(file.path, file.folder / "messages.json");
        EXPECT_TRUE(pages.manifest().is_null());
        EXPECT_EQ(pages.count(), 3);
    }
}

TEST(MessagePages, UnpackNoManifestOfAnySize)
{
    const Stored file(zipOf({{manifestName, std::string(2'000'000, ' ')}, {messagesName, "[]"}}));
    EXPECT_THROW(MessagePages(file.path, file.folder / "messages.json"), ArchiveError);
}

TEST(MessagePages, KeepWhatTheyUnpackedToTheirOwner)
{
    const Stored file(archiveOf(testMessages(1)));
    {
        const MessagePages pages(file.path, file.folder / "messages.json");
        EXPECT_EQ(std::filesystem::status(file.folder / "messages.json").permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    }
    EXPECT_THAT(file.folder.names(), ElementsAre("archive.zip"));
}

TEST(MessagePages, OfNoMessagesAreEmpty)
{
    const Stored file(archiveOf(testMessages(0)));
    EXPECT_TRUE(MessagePages(file.path, file.folder / "messages.json").page(0).empty());
}

} // namespace
} // namespace vorn::testing
