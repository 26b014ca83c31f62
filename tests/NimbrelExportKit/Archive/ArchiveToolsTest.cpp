#include "NimbrelExportKit/Archive/ZipWriter.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <random>
#include <string>

/// Reads our archives with other programs. A missing program fails its cases: they would otherwise prove nothing.
namespace vorn {
namespace {

using namespace std::chrono;
using namespace vorn::testing;

struct Outcome {
    int status = -1;
    std::string output; ///< both streams
};

Outcome run(const std::string& command)
{
    Outcome outcome;
    FILE* pipe = popen(("LC_ALL=C.UTF-8 " + command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return outcome;
    char buffer[4096];
    for (std::size_t count = 0; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        outcome.output.append(buffer, count);
    outcome.status = pclose(pipe);
    return outcome;
}

void expectContains(const Outcome& outcome, std::string_view wanted)
{
    EXPECT_NE(outcome.output.find(wanted), std::string::npos) << "no \"" << wanted << "\" in:\n" << outcome.output;
}

/// An archive with every kind of entry, in a folder whose path needs no quoting.
class ArchiveTools : public ::testing::Test {
protected:
    ArchiveTools()
    {
        for (int i = 0; deflated_.size() < 600'000; ++i) deflated_ += "line " + std::to_string(i) + " – größer 😀\n";
        std::mt19937 random(5);
        random_.resize(100'000);
        for (char& byte : random_) byte = static_cast<char>(random());
        const Instant time = sys_days(2026y / March / 1) + 9h + 15min + 30s;
        const std::vector<ZipEntry> entries{{"vorn-nimbrel-export.json", bytesOf("[]"), time},
                                            {"deflated.txt", bytesOf(deflated_), time},
                                            {"random.bin", bytesOf(random_), time},
                                            {"empty", {}, time},
                                            {"größe 😀.txt", bytesOf("name in UTF-8"), time}};
        ZipWriter::write(entries, path_);
    }

    Outcome onArchive(const std::string& command) { return run(command + " " + path_.string()); }

    ScopedEnvironment zone_{"TZ", "UTC0"};
    TemporaryFolder folder_;
    std::filesystem::path path_ = folder_ / "archive.zip";
    std::string deflated_;
    std::string random_;
};

TEST_F(ArchiveTools, UnzipTestsItWithoutErrors)
{
    const Outcome outcome = onArchive("unzip -t");
    EXPECT_EQ(outcome.status, 0);
    expectContains(outcome, "No errors detected in compressed data");
}

TEST_F(ArchiveTools, UnzipListsModesTimesAndUnicodeNames)
{
    const Outcome outcome = onArchive("unzip -Z -T -l");
    EXPECT_EQ(outcome.status, 0);
    expectContains(outcome, "-rw-r--r--  2.0 unx        2 b-        2 stor 20260301.091530 vorn-nimbrel-export.json");
    expectContains(outcome, "größe 😀.txt");
    expectContains(outcome, "5 files");
}

TEST_F(ArchiveTools, UnzipExtractsTheContent)
{
    EXPECT_EQ(run("unzip -p " + path_.string() + " deflated.txt").output, deflated_);
    EXPECT_EQ(run("unzip -p " + path_.string() + " random.bin").output, random_);
}

TEST_F(ArchiveTools, SevenZipTestsItWithoutErrors)
{
    const Outcome outcome = onArchive("7z t");
    EXPECT_EQ(outcome.status, 0);
    expectContains(outcome, "Everything is Ok");
    expectContains(outcome, "Files: 5");
    EXPECT_EQ(outcome.output.find("WARNING"), std::string::npos) << outcome.output;
}

TEST_F(ArchiveTools, PythonReadsItWithTheSameFields)
{
    const Outcome outcome =
        run("python3 -X utf8 -c \"import zipfile; z = zipfile.ZipFile('" + path_.string() +
            "'); print(z.testzip()); "
            "[print(i.filename, oct(i.external_attr >> 16), i.date_time, i.flag_bits, i.compress_type) "
            "for i in z.infolist()]\"");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "None\n"
                              "vorn-nimbrel-export.json 0o100644 (2026, 3, 1, 9, 15, 30) 2048 0\n"
                              "deflated.txt 0o100644 (2026, 3, 1, 9, 15, 30) 2048 8\n"
                              "random.bin 0o100644 (2026, 3, 1, 9, 15, 30) 2048 0\n"
                              "empty 0o100644 (2026, 3, 1, 9, 15, 30) 2048 0\n"
                              "größe 😀.txt 0o100644 (2026, 3, 1, 9, 15, 30) 2048 0\n");
}

TEST_F(ArchiveTools, BsdtarListsAndExtractsIt)
{
    const Outcome listing = onArchive("bsdtar -tvf");
    EXPECT_EQ(listing.status, 0);
    expectContains(listing, "-rw-r--r--");
    expectContains(listing, "größe 😀.txt");
    EXPECT_EQ(run("bsdtar -xOf " + path_.string() + " deflated.txt").output, deflated_);
}

TEST(ArchiveToolsAtTheLimit, Python65534Entries)
{
    const TemporaryFolder folder;
    ZipWriter::write(std::vector<ZipEntry>(65'534, ZipEntry{"a", bytesOf("x"), Instant(seconds(1'800'000'000))}),
                     folder / "many.zip");
    const Outcome outcome = run("python3 -c \"import zipfile; print(len(zipfile.ZipFile('" +
                                (folder / "many.zip").string() + "').infolist()))\"");
    EXPECT_EQ(outcome.output, "65534\n");
}

TEST(ArchiveToolsAtTheLimit, PythonOpensAnArchiveWithoutEntries)
{
    const TemporaryFolder folder;
    ZipWriter::write({}, folder / "none.zip");
    const Outcome outcome = run("python3 -c \"import zipfile; print(zipfile.ZipFile('" +
                                (folder / "none.zip").string() + "').namelist())\"");
    EXPECT_EQ(outcome.output, "[]\n");
}

} // namespace
} // namespace vorn
