#include "tests/NimbrelExportKit/Archive/ZipEntries.h"

#include <new>

#include <sys/mman.h>

namespace vorn {
namespace {

using namespace vorn::testing;

/// Inaccessible address space: an entry made of it must be refused for its size, before any byte is read.
class UnreadableBytes {
public:
    explicit UnreadableBytes(std::size_t size)
        : size_(size), at_(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))
    {
        if (at_ == MAP_FAILED) throw std::bad_alloc();
    }
    ~UnreadableBytes() { munmap(at_, size_); }
    UnreadableBytes(UnreadableBytes&&) = delete;

    ByteView view() const { return {static_cast<const std::byte*>(at_), size_}; }

private:
    std::size_t size_;
    void* at_;
};

TEST(ZipWriter, RefusesAnEmptyName)
{
    EXPECT_EQ(failure({entry("", "x")}), invalidName(""));
}

TEST(ZipWriter, RefusesANameThatBeginsWithASlash)
{
    EXPECT_EQ(failure({entry("/etc/passwd", "x")}), invalidName("/etc/passwd"));
    EXPECT_EQ(failure({entry("fine", "x"), entry("/", "x")}), invalidName("/"));
}

TEST(ZipWriter, ChecksNothingElseAboutANameThanItsFirstByteAndLength)
{
    for (const char* name : {"..", "../a", "a\\b", "a//", " ", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(readBack(entry(name, "x")).local.name, name);
    }
}

TEST(ZipWriter, AcceptsANameOf65534BytesAndRefusesOneMore)
{
    std::string name;
    for (int i = 0; i < 32'767; ++i) name += "é";
    ASSERT_EQ(name.size(), 65'534U);
    const ArchivedFile file = readBack(entry(name, "x"));
    EXPECT_EQ(file.local.name, name);
    EXPECT_EQ(file.central.name, name);
    EXPECT_EQ(failure({entry(name + "a", "x")}), invalidName(name + "a"));
}

TEST(ZipWriter, Accepts65534Entries)
{
    const std::vector<ZipEntry> entries(65'534, entry("a", "x"));
    const ReadArchive archive = readArchive(archiveOf(entries));
    EXPECT_EQ(archive.files.size(), 65'534U);
    EXPECT_EQ(archive.end.countHere, 65'534);
    EXPECT_EQ(archive.end.count, 65'534);
    EXPECT_EQ(archive.files.back().central.offset, archive.files.back().offset);
}

TEST(ZipWriter, Refuses65535EntriesBeforeItLooksAtAnyName)
{
    EXPECT_EQ(failure(std::vector<ZipEntry>(65'535, entry("a", "x"))), tooLarge);
    EXPECT_EQ(failure(std::vector<ZipEntry>(65'535, entry("", "x"))), tooLarge);
}

TEST(ZipWriter, RefusesAnEntryOf4294967295Bytes)
{
    const UnreadableBytes bytes(4'294'967'295);
    EXPECT_EQ(failure({{"a", bytes.view(), someTime}}), tooLarge);
    const UnreadableBytes more(4'294'967'296);
    EXPECT_EQ(failure({{"a", more.view(), someTime}}), tooLarge);
}

TEST(ZipWriter, ChecksTheNameBeforeTheSize)
{
    const UnreadableBytes bytes(4'294'967'295);
    EXPECT_EQ(failure({{"", bytes.view(), someTime}}), invalidName(""));
}

TEST(ZipWriter, ChecksOneEntryAfterTheOther)
{
    const UnreadableBytes bytes(4'294'967'295);
    EXPECT_EQ(failure({{"a", bytes.view(), someTime}, entry("", "x")}), tooLarge);
    EXPECT_EQ(failure({entry("/", "x"), {"a", bytes.view(), someTime}}), invalidName("/"));
}

TEST(ZipWriter, HoldsSizesAgainstTheLargestOne)
{
    EXPECT_EQ(ZipWriter::Settings().largest, 4'294'967'294U);
    ZipWriter::Settings settings;
    settings.largest = 1'000;
    EXPECT_EQ(failure({entry("a", std::string(1'000, 'x'))}, settings), std::nullopt);
    EXPECT_EQ(failure({entry("a", std::string(1'001, 'x'))}, settings), tooLarge);
}

TEST(ZipWriter, RefusesAnEntryWhoseHeaderWouldLieTooFarBehind)
{
    const std::string next = noise(100);
    for (const bool beyond : {false, true}) {
        SCOPED_TRACE(beyond);
        const std::string first = noise(beyond ? 970 : 969); // followed by 30 + 1 + 969 = 1,000
        int asked = 0;
        EXPECT_EQ(failure({entry("a", first), entry("b", next)}, countingIn(asked, 1'000)), tooLarge);
        EXPECT_EQ(asked, beyond ? 1 : 2) << "at 1,000 only the directory does not fit any more";
    }
}

TEST(ZipWriter, ChecksTheNameBeforeTheOffset)
{
    ZipWriter::Settings settings;
    settings.largest = 1'000;
    EXPECT_EQ(failure({entry("a", noise(980)), entry("", "x")}, settings), invalidName(""));
    EXPECT_EQ(failure({entry("a", noise(980)), entry("b", "x"), entry("", "x")}, settings), tooLarge);
}

TEST(ZipWriter, RefusesADirectoryThatEndsTooFarBehind)
{
    const std::string data(64, 'x'); // local 30 + 1 + 64, directory 46 + 1: 142
    ZipWriter::Settings settings;
    settings.largest = 142;
    EXPECT_EQ(failure({entry("a", data)}, settings), std::nullopt);
    settings.largest = 141;
    EXPECT_EQ(failure({entry("a", data)}, settings), tooLarge);
}

} // namespace
} // namespace vorn
