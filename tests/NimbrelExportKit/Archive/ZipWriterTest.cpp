#include "NimbrelExportKit/Archive/ZipWriter.h"

#include "NimbrelExportKit/Archive/CRC32.h"
#include "tests/NimbrelExportKit/Archive/ZipEntries.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <cstring>

namespace vorn {
namespace {

using namespace std::chrono;
using namespace vorn::testing;

TEST(ZipWriter, WritesJustTheEndRecordForNoEntries)
{
    const ByteBuffer bytes = archiveOf({});
    ASSERT_EQ(bytes.size(), 22U);
    EXPECT_EQ(textOf(ByteView(bytes).first(4)), "PK\x05\x06");
    EXPECT_EQ(textOf(ByteView(bytes).subspan(4)), std::string(18, '\0'));
}

TEST(ZipWriter, WritesEveryByteOfASmallArchive)
{
    const ScopedEnvironment zone("TZ", "UTC0");
    const ByteBuffer bytes = archiveOf({entry("é", "123456789", sys_days(2026y / March / 1) + 13h + 45min + 59s)});
    const unsigned char expected[] = {
        'P',  'K',  3,    4,    20,  0,   0x00, 0x08, 0,    0,    0xBD, 0x6D, 0x61, 0x5C, 0x26, 0x39,
        0xF4, 0xCB, 9,    0,    0,   0,   9,    0,    0,    0,    2,    0,    0,    0,    0xC3, 0xA9,
        '1',  '2',  '3',  '4',  '5', '6', '7',  '8',  '9', //
        'P',  'K',  1,    2,    20,  3,   20,   0,    0x00, 0x08, 0,    0,    0xBD, 0x6D, 0x61, 0x5C,
        0x26, 0x39, 0xF4, 0xCB, 9,   0,   0,    0,    9,    0,    0,    0,    2,    0,    0,    0,
        0,    0,    0,    0,    0,   0,   0,    0,    0xA4, 0x81, 0,    0,    0,    0,    0xC3, 0xA9, //
        'P',  'K',  5,    6,    0,   0,   0,    0,    1,    0,    1,    0,    48,   0,    0,    0,
        41,   0,    0,    0,    0,   0};
    ASSERT_EQ(bytes.size(), sizeof expected);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        EXPECT_EQ(std::to_integer<unsigned>(bytes[i]), unsigned{expected[i]}) << "at " << i;
    }
}

TEST(ZipWriter, FillsEveryFieldOfTheLocalHeader)
{
    const std::string data(1'000, 'x');
    const LocalHeader header = readBack(entry("a/b.json", data)).local;
    EXPECT_EQ(header.signature, 0x04034B50U);
    EXPECT_EQ(header.versionNeeded, 20);
    EXPECT_EQ(header.flags, 0x0800);
    EXPECT_EQ(header.method, 8);
    EXPECT_EQ(header.checksum, CRC32::checksum(bytesOf(data)));
    EXPECT_LT(header.packedSize, 1'000U);
    EXPECT_EQ(header.size, 1'000U);
    EXPECT_EQ(header.nameLength, 8);
    EXPECT_EQ(header.extraLength, 0);
    EXPECT_EQ(header.name, "a/b.json");
}

TEST(ZipWriter, FillsEveryFieldOfTheCentralRecord)
{
    const std::string data(1'000, 'x');
    const ArchivedFile file = readBack(entry("a/b.json", data));
    const CentralRecord& record = file.central;
    EXPECT_EQ(record.signature, 0x02014B50U);
    EXPECT_EQ(record.madeBy, 0x0314);
    EXPECT_EQ(record.versionNeeded, 20);
    EXPECT_EQ(record.flags, 0x0800);
    EXPECT_EQ(record.method, 8);
    EXPECT_EQ(record.time, file.local.time);
    EXPECT_EQ(record.date, file.local.date);
    EXPECT_EQ(record.checksum, CRC32::checksum(bytesOf(data)));
    EXPECT_EQ(record.packedSize, file.local.packedSize);
    EXPECT_EQ(record.size, 1'000U);
    EXPECT_EQ(record.nameLength, 8);
    EXPECT_EQ(record.extraLength, 0);
    EXPECT_EQ(record.commentLength, 0);
    EXPECT_EQ(record.disk, 0);
    EXPECT_EQ(record.internalAttributes, 0);
    EXPECT_EQ(record.externalAttributes, 0x81A40000U);
    EXPECT_EQ(record.offset, 0U);
    EXPECT_EQ(record.name, "a/b.json");
}

TEST(ZipWriter, KeepsTheOrderOfItsEntriesInBothSections)
{
    const std::string text(500, 'y');
    const std::string random = noise(300);
    const ReadArchive archive =
        readArchive(archiveOf({entry("z", text), entry("a", ""), entry("m", random), entry("a", "again")}));
    ASSERT_EQ(archive.files.size(), 4U);
    const std::pair<const char*, std::string_view> expected[] = {{"z", text}, {"a", ""}, {"m", random}, {"a", "again"}};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        const ArchivedFile& file = archive.files[i];
        EXPECT_EQ(file.local.name, expected[i].first);
        EXPECT_EQ(file.central.name, expected[i].first);
        EXPECT_EQ(file.content, expected[i].second);
        EXPECT_EQ(file.central.offset, file.offset);
        EXPECT_EQ(file.local.checksum, CRC32::checksum(bytesOf(expected[i].second)));
    }
}

TEST(ZipWriter, FillsEveryFieldOfTheEndRecord)
{
    const std::string text(500, 'y');
    const ReadArchive archive = readArchive(archiveOf({entry("one", text), entry("two", "2")}));
    EXPECT_EQ(archive.end.signature, 0x06054B50U);
    EXPECT_EQ(archive.end.disk, 0);
    EXPECT_EQ(archive.end.directoryDisk, 0);
    EXPECT_EQ(archive.end.countHere, 2);
    EXPECT_EQ(archive.end.count, 2);
    EXPECT_EQ(archive.end.directorySize, archive.directorySize);
    EXPECT_EQ(archive.end.directoryOffset, archive.directoryOffset);
    EXPECT_EQ(archive.end.commentLength, 0);
}

TEST(ZipWriter, StoresSixtyFourBytesThatWouldCompress)
{
    int asked = 0;
    const std::string text(64, 'x');
    EXPECT_EQ(readBack(entry("a", text)).local.method, 0);
    archiveOf({entry("a", text)}, countingIn(asked, 1'000'000));
    EXPECT_EQ(asked, 0) << "the encoder is not even asked";
}

TEST(ZipWriter, DeflatesSixtyFiveBytesThatGetSmaller)
{
    const std::string text(65, 'x');
    const ArchivedFile file = readBack(entry("a", text));
    EXPECT_EQ(file.local.method, 8);
    EXPECT_LT(file.local.packedSize, 65U);
    EXPECT_EQ(file.content, text);
}

TEST(ZipWriter, StoresSixtyFiveBytesThatDoNotGetSmaller)
{
    const std::string random = noise(65);
    const ArchivedFile file = readBack(entry("a", random));
    EXPECT_EQ(file.local.method, 0);
    EXPECT_EQ(file.content, random);
}

TEST(ZipWriter, StoresRandomBytesAtTheirOwnSize)
{
    const std::string random = noise(100'000);
    const ArchivedFile file = readBack(entry("a", random));
    EXPECT_EQ(file.local.method, 0);
    EXPECT_EQ(file.central.method, 0);
    EXPECT_EQ(file.local.packedSize, 100'000U);
    EXPECT_EQ(file.local.size, 100'000U);
    EXPECT_EQ(file.content, random);
}

TEST(ZipWriter, StoresAnEmptyFile)
{
    const ArchivedFile file = readBack({"a", {}, someTime});
    EXPECT_EQ(file.local.method, 0);
    EXPECT_EQ(file.local.size, 0U);
    EXPECT_EQ(file.local.packedSize, 0U);
    EXPECT_EQ(file.local.checksum, 0U);
}

TEST(ZipWriter, StoresWhatTheEncoderGotWrong)
{
    const std::string text(1'000, 'x');
    ZipWriter::Settings settings;
    settings.encoder = [sound = settings.encoder](ByteView data, std::span<std::byte> room) {
        ByteBuffer changed(data.begin(), data.end());
        changed[500] ^= std::byte{1};
        return sound(changed, room);
    };
    const ArchivedFile file = readArchive(archiveOf({entry("a", text), entry("b", "")}, settings)).files.at(0);
    EXPECT_EQ(file.local.method, 0);
    EXPECT_EQ(file.local.packedSize, 1'000U);
    EXPECT_EQ(file.content, text);
    EXPECT_EQ(file.local.checksum, CRC32::checksum(bytesOf(text)));
}

TEST(ZipWriter, GivesTheEncoderRoomForExactlyTheInput)
{
    ZipWriter::Settings settings;
    std::vector<std::size_t> rooms;
    settings.encoder = [&rooms](ByteView data, std::span<std::byte> room) -> std::size_t {
        EXPECT_EQ(room.size(), data.size());
        rooms.push_back(room.size());
        return 0;
    };
    archiveOf({entry("a", std::string(65, 'a')), entry("b", std::string(5'000, 'b'))}, settings);
    EXPECT_EQ(rooms, (std::vector<std::size_t>{65, 5'000}));
}

TEST(ZipWriter, WritesLocalTimeInDosFields)
{
    struct Case {
        const char* name;
        const char* zone;
        Instant modified;
        int time, date;
    };
    const Case cases[] = {
        {"seconds are halved and cut", "UTC0", sys_days(2026y / March / 1) + 13h + 45min + 59s, 13 << 11 | 45 << 5 | 29,
         46 << 9 | 3 << 5 | 1},
        {"milliseconds are cut", "UTC0", sys_days(2026y / March / 1) + 1999ms, 0, 46 << 9 | 3 << 5 | 1},
        {"east of Greenwich it is later", "JST-9", sys_days(2026y / March / 1) + 20h, 5 << 11, 46 << 9 | 3 << 5 | 2},
        {"west of Greenwich it is earlier", "PST8", sys_days(2026y / March / 1) + 7h, 23 << 11, 46 << 9 | 2 << 5 | 28},
        {"summer time counts", "CET-1CEST,M3.5.0,M10.5.0/3", sys_days(2026y / July / 1) + 10h, 12 << 11,
         46 << 9 | 7 << 5 | 1},
        {"1979 is written as 1980", "UTC0", sys_days(1979y / June / 15) + 10h, 10 << 11, 0 << 9 | 6 << 5 | 15},
        {"1969 is written as 1980", "UTC0", sys_days(1969y / December / 31) + 23h, 23 << 11, 0 << 9 | 12 << 5 | 31},
        {"the first year", "UTC0", sys_days(1980y / January / 1), 0, 0 << 9 | 1 << 5 | 1},
        {"the year before turns with the zone", "PST8", sys_days(1980y / January / 1), 16 << 11, 0 << 9 | 12 << 5 | 31},
        {"the last year", "UTC0", sys_days(2107y / December / 31) + 23h + 59min + 58s, 23 << 11 | 59 << 5 | 29,
         127 << 9 | 12 << 5 | 31},
        {"2108 is written as 2107", "UTC0", sys_days(2108y / January / 1), 0, 127 << 9 | 1 << 5 | 1},
        {"2200 is written as 2107", "UTC0", sys_days(2200y / May / 4), 0, 127 << 9 | 5 << 5 | 4},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const ScopedEnvironment zone("TZ", one.zone);
        const ArchivedFile file = readBack(entry("a", "x", one.modified));
        EXPECT_EQ(file.local.time, one.time);
        EXPECT_EQ(file.local.date, one.date);
        EXPECT_EQ(file.central.time, one.time);
        EXPECT_EQ(file.central.date, one.date);
    }
}

TEST(ZipWriter, WritesTheArchiveToAFileAndReplacesWhatWasThere)
{
    const TemporaryFolder folder;
    writeFile(folder / "out.zip",
              "something longer that was there before, and must be gone afterwards, every byte of it");
    const std::vector<ZipEntry> entries{entry("a", "x")};
    ZipWriter::write(entries, folder / "out.zip");
    EXPECT_EQ(readFile(folder / "out.zip"), textOf(archiveOf(entries)));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"out.zip"});
}

TEST(ZipWriter, WritesNothingWhenTheArchiveCannotBeMade)
{
    const TemporaryFolder folder;
    const std::vector<ZipEntry> entries{entry("a", "x"), entry("", "x")};
    EXPECT_THROW(ZipWriter::write(entries, folder / "new.zip"), ZipWriterError);
    writeFile(folder / "old.zip", "old");
    EXPECT_THROW(ZipWriter::write(entries, folder / "old.zip"), ZipWriterError);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"old.zip"});
    EXPECT_EQ(readFile(folder / "old.zip"), "old");
}

TEST(ZipWriter, PassesOnWhatTheFileManagerThrows)
{
    const TemporaryFolder folder;
    RefusingFileManager files(folder.path());
    files.beforeWrite = RefusingFileManager::refuse(std::errc::no_space_on_device);
    try {
        ZipWriter::write(std::vector{entry("a", "x")}, folder / "out.zip", files);
        FAIL() << "did not throw";
    } catch (const std::filesystem::filesystem_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
        EXPECT_EQ(error.path1(), folder / "out.zip");
    }
    EXPECT_TRUE(folder.names().empty());
}

TEST(ZipWriterError, IsComparedByCaseAndName)
{
    EXPECT_EQ(invalidName("/a"), invalidName("/a"));
    EXPECT_NE(invalidName("/a"), invalidName("/b"));
    EXPECT_NE(invalidName(""), tooLarge);
    EXPECT_EQ(tooLarge, ZipWriterError(ZipWriterError::TooLarge{}));
    EXPECT_EQ(std::get<ZipWriterError::InvalidName>(invalidName("/a").reason()).name, "/a");
}

TEST(ZipWriterError, NamesItsCaseAndSaysNoMore)
{
    EXPECT_STREQ(invalidName("/private").what(), "invalidName");
    EXPECT_STREQ(tooLarge.what(), "tooLarge");
}

TEST(ZipEntry, IsComparedByItsBytes)
{
    const std::string one = "same bytes";
    const std::string other = "same " + std::string("bytes");
    EXPECT_EQ(entry("a", one), entry("a", other));
    EXPECT_NE(entry("a", one), entry("b", one));
    EXPECT_NE(entry("a", one), entry("a", "other bytes"));
    EXPECT_NE(entry("a", one), entry("a", one, someTime + 1ms));
}

} // namespace
} // namespace vorn
