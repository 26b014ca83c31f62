#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"

#include "NimbrelExportKit/Archive/ZipWriter.h"
#include "tests/NimbrelExportKit/Archive/ArchiveReader.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono;
using namespace vorn::testing;
using namespace NimbrelArchiveBuilder;

const Instant someTime = sys_days(2026y / March / 1) + 9h + 15min + 20s;
const ExporterInfo exporter{"1.2.3", "macOS 14.5"};

NimbrelExportResult sampleResult(std::size_t messageCount)
{
    NimbrelExportResult result;
    result.chats = {{1, "chat", "nimbrel@example.org", "iMessage"}};
    result.skipped.add("reaction", 3);
    for (std::size_t i = 0; i < messageCount; ++i) {
        ExportedMessage message;
        message.guid = "guid " + std::to_string(i);
        message.chat = RecordText("chat");
        message.text = "see https://example.org/" + std::to_string(i);
        result.messages.push_back(message);
    }
    return result;
}

ReadArchive readFrom(const std::filesystem::path& path)
{
    return readArchive(bytesOf(readFile(path)));
}

TEST(NimbrelArchiveBuilder, PutsTheManifestFirstAndTheMessagesSecond)
{
    const TemporaryFolder folder;
    const NimbrelExportResult result = sampleResult(10);
    writeArchive(result, exporter, folder / "out.zip", someTime);
    const ReadArchive archive = readFrom(folder / "out.zip");
    ASSERT_EQ(archive.files.size(), 2U);
    EXPECT_EQ(archive.files[0].local.name, "vorn-nimbrel-export.json");
    EXPECT_EQ(archive.files[0].content, textOf(manifestJSON(result, exporter, someTime)));
    EXPECT_EQ(archive.files[1].local.name, "vorn-nimbrel-messages.json");
    EXPECT_EQ(archive.files[1].content, textOf(messagesJSON(result)));
    EXPECT_EQ(archive.files[1].local.method, 8);
}

TEST(NimbrelArchiveBuilder, PacksAnExportWithoutMessages)
{
    const TemporaryFolder folder;
    writeArchive({}, exporter, folder / "out.zip", someTime);
    const ReadArchive archive = readFrom(folder / "out.zip");
    ASSERT_EQ(archive.files.size(), 2U);
    EXPECT_NE(archive.files[0].content.find(R"("messageCount":0)"), std::string::npos);
    EXPECT_EQ(archive.files[1].content, "[]");
    EXPECT_EQ(archive.files[1].local.method, 0);
    EXPECT_EQ(archive.files[1].local.packedSize, 2U);
}

TEST(NimbrelArchiveBuilder, GivesBothEntriesTheTimeOfTheExport)
{
    const ScopedEnvironment zone("TZ", "JST-9");
    const TemporaryFolder folder;
    writeArchive(sampleResult(1), exporter, folder / "out.zip", someTime);
    for (const ArchivedFile& file : readFrom(folder / "out.zip").files) {
        EXPECT_EQ(file.local.time, 18 << 11 | 15 << 5 | 10) << file.local.name;
        EXPECT_EQ(file.local.date, 46 << 9 | 3 << 5 | 1) << file.local.name;
    }
}

TEST(NimbrelArchiveBuilder, WritesTheManifestInUTCWhateverTheZone)
{
    const ScopedEnvironment zone("TZ", "JST-9");
    const ByteBuffer json = manifestJSON({}, exporter, someTime);
    EXPECT_NE(textOf(json).find(R"("exportedAt":"2026-03-01T09:15:20Z")"), std::string_view::npos);
}

TEST(NimbrelArchiveBuilder, WritesVersionOneForABundleWithoutVersion)
{
    const ByteBuffer json = manifestJSON({}, ExporterInfo::current(Bundle({}), {14, 0, 0}), someTime);
    EXPECT_NE(textOf(json).find(R"("os":"macOS 14.0","version":"1.0.0")"), std::string_view::npos);
}

TEST(NimbrelArchiveBuilder, WritesURLsWithPlainSlashes)
{
    const ByteBuffer json = messagesJSON(sampleResult(1));
    EXPECT_NE(textOf(json).find("https://example.org/0"), std::string_view::npos);
    EXPECT_EQ(textOf(json).find('\\'), std::string_view::npos);
}

TEST(NimbrelArchiveBuilder, KeepsTheOrderOfTheMessages)
{
    NimbrelExportResult result = sampleResult(2);
    std::swap(result.messages[0], result.messages[1]);
    const ByteBuffer json = messagesJSON(result);
    EXPECT_LT(textOf(json).find("guid 1"), textOf(json).find("guid 0"));
}

TEST(NimbrelArchiveBuilder, ReturnsWhereTheArchiveIsAndItsSize)
{
    const TemporaryFolder folder;
    const ArchiveFile file = writeArchive(sampleResult(100), exporter, folder / "out.zip", someTime);
    EXPECT_EQ(file, (ArchiveFile{folder / "out.zip",
                                 static_cast<std::int64_t>(std::filesystem::file_size(folder / "out.zip"))}));
    EXPECT_GT(file.sizeBytes, 500);
    EXPECT_NE(file, (ArchiveFile{folder / "other.zip", file.sizeBytes}));
    EXPECT_NE(file, (ArchiveFile{file.url, 0}));
}

TEST(NimbrelArchiveBuilder, ReplacesWhatWasThere)
{
    const TemporaryFolder folder;
    writeFile(folder / "out.zip", "not an archive");
    writeArchive({}, exporter, folder / "out.zip", someTime);
    EXPECT_EQ(readFrom(folder / "out.zip").files.size(), 2U);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"out.zip"});
}

TEST(NimbrelArchiveBuilder, LeavesNoFileWhenWritingFails)
{
    const TemporaryFolder folder;
    RefusingFileManager files(folder.path());
    files.beforeWrite = RefusingFileManager::refuse(std::errc::no_space_on_device);
    try {
        writeArchive({}, exporter, folder / "out.zip", someTime, files);
        FAIL() << "did not throw";
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST(NimbrelArchiveBuilder, LeavesNoFileInAFolderThatIsNotThere)
{
    const TemporaryFolder folder;
    EXPECT_THROW(writeArchive({}, exporter, folder.path() / "missing" / "out.zip", someTime),
                 std::filesystem::filesystem_error);
    EXPECT_TRUE(folder.names().empty());
}

TEST(NimbrelArchiveBuilder, LeavesTheFileWhenItsSizeCannotBeRead)
{
    const TemporaryFolder folder;
    RefusingFileManager files(folder.path());
    files.beforeSize = RefusingFileManager::refuse(std::errc::io_error);
    try {
        writeArchive({}, exporter, folder / "out.zip", someTime, files);
        FAIL() << "did not throw";
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.code(), std::errc::io_error);
    }
    EXPECT_EQ(readFrom(folder / "out.zip").files.size(), 2U);
}

} // namespace
} // namespace vorn
