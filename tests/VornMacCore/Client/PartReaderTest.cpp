#include "VornMacCore/Client/PartReader.h"

#include "tests/support/TemporaryFolder.h"

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using testing::writeFile;

/// The content of `body`, read in small pieces.
std::string text(const std::shared_ptr<const HTTPBody>& body)
{
    std::string result;
    std::array<std::byte, 3> piece{};
    while (std::ssize(result) < body->size()) {
        const std::size_t count = body->read(std::ssize(result), piece);
        if (count == 0) break;
        result += textOf(ByteView(piece).first(count));
    }
    return result;
}

TEST(PartReader, ReadsEachPartByItsNumber)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaabbbbcc");
    PartReader reader(folder / "archive", PartPlan(10, 4));
    EXPECT_EQ(text(reader.read(1)), "aaaa");
    EXPECT_EQ(text(reader.read(2)), "bbbb");
    EXPECT_EQ(text(reader.read(3)), "cc");
    EXPECT_EQ(text(reader.read(2)), "bbbb");
}

TEST(PartReader, GivesAnEmptyPartOfAnEmptyFile)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "");
    PartReader reader(folder / "archive", PartPlan(0, 4));
    EXPECT_EQ(text(reader.read(1)), "");
}

TEST(PartReader, GivesWhatIsLeftOfAFileThatShrank)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaabbbbcccc");
    PartReader reader(folder / "archive", PartPlan(12, 4));
    fs::resize_file(folder / "archive", 6);
    EXPECT_EQ(text(reader.read(1)), "aaaa");
    EXPECT_EQ(text(reader.read(2)), "bb");
    EXPECT_EQ(text(reader.read(3)), "");
}

TEST(PartReader, LeavesOutWhatWasAddedToTheFile)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaabb");
    PartReader reader(folder / "archive", PartPlan(6, 4));
    writeFile(folder / "archive", "aaaabbbbcccc");
    EXPECT_EQ(text(reader.read(2)), "bb");
}

TEST(PartReader, GivesPartsThatOutliveIt)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaa");
    std::shared_ptr<const HTTPBody> part;
    {
        const PartReader reader(folder / "archive", PartPlan(4, 4));
        part = reader.read(1);
    }
    EXPECT_EQ(text(part), "aaaa");
}

TEST(PartReader, GivesNothingWhereTheFileShrinksWhileItIsSent)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaa");
    const PartReader reader(folder / "archive", PartPlan(4, 4));
    const auto part = reader.read(1);
    fs::resize_file(folder / "archive", 2);
    EXPECT_EQ(part->size(), 4);
    EXPECT_EQ(text(part), "aa");
}

TEST(PartReader, RefusesWhatIsNoFile)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), S_IRUSR | S_IWUSR), 0);
    const auto codeFor = [&folder](const char* name) {
        try {
            const PartReader reader(folder / name, PartPlan(4, 4));
        } catch (const fs::filesystem_error& error) {
            EXPECT_EQ(error.path1(), folder / name);
            return error.code();
        }
        return std::error_code();
    };
    EXPECT_EQ(codeFor("missing"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(codeFor("folder"), std::errc::is_a_directory);
    EXPECT_EQ(codeFor("pipe"), std::errc::invalid_argument);
}

} // namespace
} // namespace vorn
