#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/UploadError.h"
#include "tests/VornMacCore/Client/UploadFixture.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using namespace testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t eightMiB = 8'388'608;

/// Text that does not repeat, so that a part cut in the wrong place is noticed.
std::string patterned(std::size_t size)
{
    std::string text;
    text.reserve(size + 16);
    while (text.size() < size) text += std::to_string(text.size()) + '\n';
    text.resize(size);
    return text;
}

void uploadInParts(UploadFixture& fix, int parts)
{
    fix.opens(fix.urlsOf(1, parts));
    for (int part = 1; part <= parts; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
}

TEST(UploadFiles, OfNoBytesAreOneEmptyPart)
{
    UploadFixture fix("", PartPlan::defaultPartSize);
    uploadInParts(fix, 1);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), completing));
    EXPECT_EQ(fix.bodyOf(0)["sizeBytes"], 0);
    EXPECT_EQ(fix.bodyOf(0)["partCount"], 1);
    EXPECT_EQ(fix.server.requests().at(1).body, "");
    EXPECT_THAT(headersOf(fix.server.requests().at(1)),
                ElementsAre("Content-Length: 0", "Host: 127.0.0.1:" + std::to_string(fix.server.port())));
    EXPECT_EQ(fix.bodyOf(2)["sha256"], "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

// The hashes in this test and the next one were printed by sha256sum.
TEST(UploadFiles, OfExactlyEightMebibytesAreOnePart)
{
    const std::string content = patterned(eightMiB);
    UploadFixture fix(content, PartPlan::defaultPartSize);
    uploadInParts(fix, 1);
    EXPECT_EQ(fix.bodyOf(0)["sizeBytes"], 8'388'608);
    EXPECT_EQ(fix.bodyOf(0)["partCount"], 1);
    EXPECT_TRUE(fix.server.requests().at(1).body == content);
    EXPECT_EQ(fix.bodyOf(2)["sha256"], "d74f43201d3e12f9dbfa85fc49cd265d9627ee026582482dd5da70e86207afe0");
}

TEST(UploadFiles, OfOneByteMoreAreTwoParts)
{
    const std::string content = patterned(eightMiB + 1);
    UploadFixture fix(content, PartPlan::defaultPartSize);
    uploadInParts(fix, 2);
    EXPECT_EQ(fix.bodyOf(0)["sizeBytes"], 8'388'609);
    EXPECT_EQ(fix.bodyOf(0)["partCount"], 2);
    EXPECT_TRUE(fix.server.requests().at(1).body == content.substr(0, eightMiB));
    EXPECT_EQ(fix.server.requests().at(2).body, content.substr(eightMiB));
    EXPECT_EQ(fix.bodyOf(3)["sha256"], "8176b94ec9bd3bf89baa9c90ecd7f9514e9af994aa7f2dc2d02672248b6d2c67");
}

TEST(UploadFiles, ThatCannotBeReadFailBeforeAnythingIsSent)
{
    struct Case {
        const char* name;
        std::function<void(const fs::path&)> prepare;
        std::errc code;
    };
    const std::vector<Case> cases{
        {"missing", [](const fs::path& path) { fs::remove(path); }, std::errc::no_such_file_or_directory},
        {"a folder",
         [](const fs::path& path) {
             fs::remove(path);
             fs::create_directory(path);
         },
         std::errc::is_a_directory},
        {"a link that leads nowhere",
         [](const fs::path& path) {
             fs::remove(path);
             fs::create_symlink("nowhere", path);
         },
         std::errc::no_such_file_or_directory},
        {"a file as its folder",
         [](const fs::path& path) {
             fs::remove(path);
             writeFile(path.parent_path() / "other", "");
             fs::create_symlink("other/archive", path);
         },
         std::errc::not_a_directory},
        {"links in a circle",
         [](const fs::path& path) {
             fs::remove(path);
             fs::create_symlink(path, path);
         },
         std::errc::too_many_symbolic_link_levels},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        UploadFixture fix("abc");
        each.prepare(fix.file);
        const auto error = fix.uploadFails<fs::filesystem_error>();
        EXPECT_EQ(error.code(), each.code);
        EXPECT_EQ(error.path1(), fix.file);
        EXPECT_THAT(fix.requests(), IsEmpty());
    }
}

TEST(UploadFiles, ThatArePipesFailWithoutWaitingForAWriter)
{
    UploadFixture fix("abc");
    fs::remove(fix.file);
    ASSERT_EQ(mkfifo(fix.file.c_str(), S_IRUSR | S_IWUSR), 0);
    fix.uploadFails<fs::filesystem_error>();
    EXPECT_THAT(fix.requests(), IsEmpty());
}

/// The rights of an ordinary user, for a process that runs as root.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        constexpr uid_t nobody = 65534;
        if (was_ == 0 && seteuid(nobody) != 0) throw std::runtime_error("cannot become an ordinary user");
    }
    ~OrdinaryUser()
    {
        if (was_ == 0 && seteuid(0) != 0) std::abort();
    }
    OrdinaryUser(OrdinaryUser&&) = delete;

private:
    uid_t was_ = geteuid();
};

TEST(UploadFiles, ThatMayNotBeReadFailBeforeAnythingIsSent)
{
    UploadFixture fix("abc");
    fs::permissions(fix.file, fs::perms::none);
    {
        const OrdinaryUser rights;
        EXPECT_EQ(fix.uploadFails<fs::filesystem_error>().code(), std::errc::permission_denied);
    }
    EXPECT_THAT(fix.requests(), IsEmpty());
}

/// Opens the submission after `change` has been made to the file that was hashed.
void opensAfter(UploadFixture& fix, int parts, const std::function<void()>& change)
{
    fix.server.script([&fix, parts, change](Exchange& exchange) {
        exchange.readWholeBody();
        change();
        exchange.answer(submissionAnswer(fix.urlsOf(1, parts)));
    });
}

TEST(UploadFiles, ThatShrinkAreSentAsFarAsTheyGo)
{
    UploadFixture fix("aaaabbbbcccc", 4);
    opensAfter(fix, 3, [&] { fs::resize_file(fix.file, 6); });
    for (int part = 1; part <= 3; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
    const auto requests = fix.server.requests();
    EXPECT_EQ(requests.at(1).body, "aaaa");
    EXPECT_EQ(requests.at(2).body, "bb");
    EXPECT_EQ(requests.at(3).body, "");
    EXPECT_EQ(requests.at(3).header("Content-Length"), "0");
    EXPECT_EQ(fix.reports().back(), (UploadProgress{8, 12})); // at the third part's start, without any of its bytes
}

TEST(UploadFiles, ThatShrinkUnderTheirPartEndTheUpload)
{
    constexpr std::size_t size = 8 * eightMiB; // more than the buffers between client and server hold
    UploadFixture fix("", size);
    fs::resize_file(fix.file, size);
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script([&fix](Exchange& exchange) {
        exchange.readBody(1);
        fs::resize_file(fix.file, 1);
        exchange.readWholeBody();
    });
    fix.aborts();
    EXPECT_EQ(fix.uploadFails<URLError>(), URLError(URLError::Code::requestBodyStreamExhausted));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
    EXPECT_FALSE(fix.server.requests().at(1).complete);
}

TEST(UploadFiles, ThatGrowAreSentAsTheyWere)
{
    UploadFixture fix("aaaabb", 4);
    opensAfter(fix, 2, [&] { writeFile(fix.file, "aaaabbbbcccc"); });
    fix.takesPart();
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), putting(2), completing));
    EXPECT_EQ(fix.server.requests().at(2).body, "bb");
    EXPECT_EQ(fix.reports().back(), (UploadProgress{6, 6}));
}

TEST(UploadFiles, ThatGoAwayAfterTheHashAbortTheSubmission)
{
    UploadFixture fix("abc");
    opensAfter(fix, 1, [&] { fs::remove(fix.file); });
    fix.aborts();
    const auto error = fix.uploadFails<fs::filesystem_error>();
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    EXPECT_EQ(error.path1(), fix.file);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, aborting));
}

TEST(UploadFiles, ThatGoAwayOnceOpenedAreSentToTheEnd)
{
    UploadFixture fix("abcd", 2);
    fix.opens(fix.urlsOf(1, 2));
    fix.server.script([&](Exchange& exchange) {
        fs::remove(fix.file);
        exchange.readWholeBody();
        exchange.answer({.headers = {{"ETag", "\"tag\""}}});
    });
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_EQ(fix.server.requests().at(2).body, "cd");
}

} // namespace
} // namespace vorn
