#include "VornMacCore/Upload/PartReader.h"

#include "tests/support/TemporaryFolder.h"

#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using testing::writeFile;

std::string text(const std::shared_ptr<const ByteBuffer>& bytes)
{
    return std::string(textOf(*bytes));
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

TEST(PartReader, ReadsEveryPartIntoTheSameMemory)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", std::string(3 * 1024 * 1024, 'x'));
    PartReader reader(folder / "archive", PartPlan(3 * 1024 * 1024, 1024 * 1024));
    const auto first = reader.read(1);
    const std::byte* const memory = first->data();
    EXPECT_EQ(reader.read(2)->data(), memory);
    EXPECT_EQ(reader.read(3)->data(), memory);
}

TEST(PartReader, GivesBytesThatOutliveIt)
{
    const TemporaryFolder folder;
    writeFile(folder / "archive", "aaaa");
    std::shared_ptr<const ByteBuffer> bytes;
    {
        PartReader reader(folder / "archive", PartPlan(4, 4));
        bytes = reader.read(1);
    }
    EXPECT_EQ(text(bytes), "aaaa");
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
