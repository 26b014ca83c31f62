// Uploading, against the local service.
#include "Platform/Base/SHA256.h"
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using testing::LinkedFixture;
using ::testing::Not;
using testing::Sandbox;
using testing::TerminalFixture;

constexpr std::size_t twoParts = 9'000'000; // a part has 8 MiB

TEST(UploadProgram, LinksAndSendsTheArchiveWhole)
{
    const TerminalFixture fix;
    const testing::TemporaryFolder state;
    Sandbox sandbox({"--state", state.path(), "--auto-approve"});
    const std::string archive = fix.archive(twoParts);
    const auto program = fix.start(sandbox.url(), {"upload", archive, "--json"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_THAT(program->errors(), HasSubstr("\nThe keychain doesn't keep the session here, so the link lasts for this "
                                             "run only.\nLinked to Sam Rivera.\nUploading your Nimbrel chat…\n"));
    EXPECT_THAT(program->errors(), HasSubstr("\n100 %  9.0 of 9.0 MB"));
    const auto result = nlohmann::json::parse(program->output());
    EXPECT_EQ(result.at("archive").at("sizeBytes"), twoParts);
    EXPECT_EQ(result.at("archive").at("sha256"), SHA256::hexDigestOfFile(archive));
    EXPECT_EQ(result.at("submission").at("status"), "analyzing");
    const std::string id = result.at("submission").at("id");
    EXPECT_EQ(SHA256::hexDigestOfFile(state / "uploads" / id / "archive.zip"), SHA256::hexDigestOfFile(archive));
}

TEST(UploadProgram, ShowsTheResultToAPerson)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const std::string archive = fix.archive(1000);
    const auto program = fix.start(sandbox.url(), {"upload", archive});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_THAT(program->output(), HasSubstr("  status        analyzing\n"
                                             "  review        Upload received. Checking your chat.\n"
                                             "Archive size    1.0 kB\n  SHA-256       " +
                                             SHA256::hexDigestOfFile(archive) + "\n"));
    const std::string token = fix.kept().value().token;
    EXPECT_THAT(program->output() + program->errors(), Not(HasSubstr(token)));
    EXPECT_THAT(program->output() + program->errors(), Not(HasSubstr("signature")));
}

TEST(UploadProgram, LeavesTheKeychainAloneWhenItIsTold)
{
    const LinkedFixture fix;
    Sandbox before;
    fix.link(before);
    const auto kept = fix.kept();
    Sandbox sandbox({"--auto-approve"});
    const auto program = fix.start(sandbox.url(), {"upload", fix.archive(1000), "--no-keychain"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_THAT(program->errors(), HasSubstr("The keychain is left alone, so the link lasts for this run only.\n"));
    EXPECT_EQ(fix.kept(), kept);
}

TEST(UploadProgram, DoesNotWaitForAServiceWhereNobodyWatches)
{
    const TerminalFixture fix;
    const auto program = fix.start("http://127.0.0.1:9", {"upload", fix.archive(1000)});
    EXPECT_EQ(program->exitCode(), 7);
    EXPECT_EQ(program->errors(), "Getting a code…\nVorn can't reach the server right now. Run it again.\n");
    EXPECT_EQ(program->output(), "");
}

TEST(UploadProgram, DoesNotWaitForAPhoneWithoutEndWhereNobodyWatches)
{
    const TerminalFixture fix;
    Sandbox sandbox({"--link-lifetime", "0.1"});
    const auto program = fix.start(sandbox.url(), {"upload", fix.archive(1000)});
    EXPECT_EQ(program->exitCode(), 3);
    EXPECT_THAT(program->errors(),
                EndsWith("\nNobody confirmed the link in time. Link this Mac first: vorn-terminal link\n"));
}

TEST(UploadProgram, WaitsForAServiceThatSomebodyWatches)
{
    const TerminalFixture fix;
    Sandbox sandbox({"--fault", "create-link=dropx1", "--auto-approve"});
    const auto program = fix.startInWindow(sandbox.url(), "upload " + fix.archive(1000));
    EXPECT_EQ(program->exitCode(), 0) << program->output();
    EXPECT_THAT(program->output(), HasSubstr("You're offline. Vorn will retry.\r\n"));
    EXPECT_THAT(program->output(), HasSubstr("Linked to Sam Rivera.\r\n"));
}

TEST(UploadProgram, SendsAPartAgainWhoseURLExpired)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--expired-first-urls"});
    fix.link(sandbox);
    EXPECT_EQ(fix.start(sandbox.url(), {"upload", fix.archive(twoParts)})->exitCode(), 0);
}

TEST(UploadProgram, SaysHowTheReviewEnded)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--review", "rejected:wrong_provider"});
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"upload", fix.archive(1000), "--watch"});
    EXPECT_EQ(program->exitCode(), 9);
    EXPECT_THAT(program->errors(),
                EndsWith("Upload received. Checking your chat.\n"
                         "Not accepted this time. This upload didn't look like your Nimbrel chat.\n"));
    EXPECT_THAT(program->output(), HasSubstr("  status        rejected\n"));
}

TEST(UploadProgram, IsRefusedWhileTheQuestTakesNoUpload)
{
    const LinkedFixture fix;
    const std::string archive = fix.archive(1000);
    Sandbox sandbox({"--review", "manual", "--delay", "0"});
    fix.link(sandbox);
    EXPECT_EQ(fix.start(sandbox.url(), {"upload", archive})->exitCode(), 0);
    const auto second = fix.start(sandbox.url(), {"upload", archive});
    EXPECT_EQ(second->exitCode(), 5);
    EXPECT_EQ(second->errors(), "Your last upload is being checked.\n");
    EXPECT_EQ(second->output(), "");
}

TEST(UploadProgram, IsRefusedDuringTheCooldown)
{
    const LinkedFixture fix;
    const std::string archive = fix.archive(1000);
    Sandbox sandbox({"--delay", "0"});
    fix.link(sandbox);
    EXPECT_EQ(fix.start(sandbox.url(), {"upload", archive})->exitCode(), 0);
    const auto second = fix.start(sandbox.url(), {"upload", archive});
    EXPECT_EQ(second->exitCode(), 5);
    EXPECT_THAT(second->errors(), ::testing::MatchesRegex("Paid. You can upload again on ....-..-..\\.\n"));
}

TEST(UploadProgram, RefusesAnArchiveBeyondTheLimit)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--max-bytes", "999"});
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"upload", fix.archive(1000)});
    EXPECT_EQ(program->exitCode(), 6);
    EXPECT_EQ(program->errors(), "Your chat is larger than the upload limit.\n");
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("/submissions")));
}

TEST(UploadProgram, SaysThatTheArchiveCannotBeReadBeforeAnythingElse)
{
    const TerminalFixture fix;
    const std::string missing = fix.folder / "missing.zip";
    const auto program = fix.start("http://127.0.0.1:9", {"upload", missing});
    EXPECT_EQ(program->exitCode(), 4);
    EXPECT_EQ(program->errors(), "Vorn couldn't read " + missing + ": No such file or directory.\n");
    const auto folder = fix.start("http://127.0.0.1:9", {"upload", fix.folder.path()});
    EXPECT_EQ(folder->exitCode(), 4);
    EXPECT_EQ(folder->errors(),
              "Vorn couldn't read " + fix.folder.path().string() + ": it is a folder, not an archive.\n");
}

TEST(UploadProgram, SaysWhatIsWrongWithItsArguments)
{
    const TerminalFixture fix;
    const auto program = fix.start("http://127.0.0.1:9", {"upload"});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(), "ARCHIVE is required\nRun with --help for more information.\n");
}

TEST(UploadProgram, SaysWhatWentWrong)
{
    struct Case {
        std::vector<std::string> options;
        int status;
        const char* text;
        bool opened; ///< the submission, which then has to be aborted
    };
    const std::vector<Case> cases = {
        {{"--fault", "quest=500"}, 8, "The sandbox was told to answer 500.", false},
        {{"--fault", "quest=404"}, 5, "Nimbrel export isn't available yet. Check back soon.", false},
        {{"--fault", "quest=garbage"}, 8, "The server sent an answer Vorn could not read.", false},
        {{"--fault", "quest=drop"}, 7, "You're offline. Run it again.", false},
        {{"--fault", "quest=401"}, 3, "Your Mac is no longer linked. Link it again.", false},
        {{"--fault", "quest=401", "--fault", "refresh=500"}, 3, "Your Mac is no longer linked. Link it again.", false},
        {{"--fault", "create-submission=503"}, 8, "The sandbox was told to answer 503.", false},
        {{"--fault", "put-part=503"}, 8, "Part 1 of the upload failed (503).", true},
        {{"--fault", "put-part=500@2"}, 8, "Part 2 of the upload failed (500).", true},
        {{"--fault", "put-part=403"}, 8, "Part 1 of the upload failed (403).", true},
        {{"--fault", "put-part=garbage"}, 8, "Part 1 of the upload was not acknowledged.", true},
        {{"--fault", "put-part=drop"}, 7, "You're offline. Run it again.", true},
        {{"--expired-first-urls", "--fault", "part-urls=500"}, 8, "The sandbox was told to answer 500.", true},
        {{"--fault", "complete=422"}, 8, "The sandbox was told to answer 422.", true},
        {{"--fault", "complete=drop"}, 7, "You're offline. Run it again.", true},
        {{"--fault", "put-part=500", "--fault", "abort=500"}, 8, "Part 1 of the upload failed (500).", true},
    };
    const LinkedFixture fix;
    const std::string archive = fix.archive(twoParts);
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(each.options));
        Sandbox sandbox(each.options);
        fix.link(sandbox);
        const auto program = fix.start(sandbox.url(), {"upload", archive});
        EXPECT_EQ(program->exitCode(), each.status);
        EXPECT_THAT(program->errors(), EndsWith(std::string(each.text) + "\n"));
        EXPECT_EQ(program->output(), "");
        EXPECT_EQ(sandbox.log().find("/abort ") != std::string::npos, each.opened);
    }
}

} // namespace
} // namespace vorn
