// The whole journey, from the link to the reward, against the local service.
#include "tests/Tools/Terminal/TerminalFixture.h"

#include <csignal>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LinkedFixture;
using ::testing::MatchesRegex;
using ::testing::Not;
using testing::Sandbox;
using testing::TerminalFixture;

TEST(JourneyProgram, GoesFromTheLinkToTheReward)
{
    const TerminalFixture fix;
    Sandbox sandbox({"--auto-approve"});
    const auto program = fix.share(sandbox.url(), {"--yes"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    const std::string said = program->errors();
    EXPECT_THAT(said, HasSubstr("There is no keychain here, or it does not answer. The link lasts for this run only.\n"
                                "Getting a code…\n"));
    EXPECT_THAT(said, HasSubstr("\nLinked to Sam Rivera.\nYour Nimbrel chat: exactly what we upload\n"));
    EXPECT_THAT(said, HasSubstr("  You earn $12.50 when it's accepted.\n\nI understand what's uploaded Yes.\n"
                                "I agree to share my Nimbrel chat Yes.\n"
                                "Reading a private copy of your Messages history…\nFound on this Mac:\n"
                                "  Messages         8\n  Your messages    4\n  Nimbrel replies  4\n  Dates  "));
    EXPECT_THAT(said, HasSubstr("\nOnly on this Mac. Nothing is uploaded yet.\n  You: Find me a dinner spot\n"
                                "  Nimbrel: message-canary\n"));
    EXPECT_THAT(said, HasSubstr("\nUpload chat? Yes.\nPacking your chat…\n"
                                "Uploading securely. Keep this window open.\n"));
    EXPECT_THAT(
        said, MatchesRegex("(.|\n)*Upload received. Checking your chat.\nYou earned .12.50. Thanks for your Nimbrel "
                           "chat. The reward is in your Vorn balance.\nUpload again on [A-Z][a-z]+ [0-9]+, [0-9]+ with "
                           "your newer chats.\n"));
    EXPECT_THAT(program->output(), MatchesRegex("Submission      sub_[0-9a-f]+\n  status        approved\n"));
    EXPECT_THAT(fix.leftovers(), IsEmpty());
}

TEST(JourneyProgram, TellsProgramsEveryChange)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program = fix.share(sandbox.url(), {"--yes", "--json"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_EQ(testing::lastState(*program, "step"), "done");
    EXPECT_EQ(testing::lastState(*program, "submission").at("status"), "approved");
    EXPECT_EQ(testing::lastState(*program, "export").at("messages"), 8);
    EXPECT_THAT(program->output(), Not(HasSubstr("message-canary")));
    EXPECT_THAT(program->output(), Not(HasSubstr(fix.kept().value().token)));
}

TEST(JourneyProgram, SendsNothingWithoutAYes)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program = fix.share(sandbox.url(), {}); // its input ends at once
    EXPECT_EQ(program->exitCode(), 11);
    EXPECT_THAT(program->errors(), EndsWith("\nI understand what's uploaded [y/N]\nNothing was uploaded.\n"));
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("submissions")));
}

TEST(JourneyProgram, AsksForConsentOnceAndKeepsItWhereItIsTold)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--review", "rejected:wrong_provider"});
    fix.link(sandbox);
    const std::vector<std::string> line = {"--yes", "-VornSettingsFile", fix.folder / "settings.ini"};
    EXPECT_EQ(fix.share(sandbox.url(), line)->exitCode(), 9);
    const auto again = fix.share(sandbox.url(), line);
    EXPECT_EQ(again->exitCode(), 9);
    EXPECT_THAT(again->errors(), Not(HasSubstr("What Vorn never reads")));
    EXPECT_THAT(again->errors(), HasSubstr("\nLast time: This upload didn't look like your Nimbrel chat.\n"));
    EXPECT_FALSE(std::filesystem::exists(fix.folder / "config")) << "the user's own";
    EXPECT_THAT(again->errors(), EndsWith("Upload received. Checking your chat.\n"
                                          "Not accepted this time. This upload didn't look like your Nimbrel chat.\n"));
}

TEST(JourneyProgram, IsRefusedWhileTheQuestTakesNoUpload)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--cooldown", "1000000"});
    fix.link(sandbox);
    EXPECT_EQ(fix.share(sandbox.url(), {"--yes"})->exitCode(), 0);
    const auto again = fix.share(sandbox.url(), {"--yes"});
    EXPECT_EQ(again->exitCode(), 5);
    EXPECT_THAT(again->errors(), HasSubstr("\nPaid. You can upload again on "));
}

TEST(JourneyProgram, ReadsNothingElseWhereAnOverrideIsMisspelt)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"--yes", "-VornMesagesDatabaseOverride", fix.database().string()});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(),
              "There is no -VornMesagesDatabaseOverride, only -VornAPIBaseURLOverride, "
              "-VornMessagesDatabaseOverride and -VornSettingsFile\nRun with --help for more information.\n");
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("GET ")));
}

TEST(JourneyProgram, CallsNobodyWhereTheAddressIsNone)
{
    const LinkedFixture fix;
    const auto program = fix.share("127.0.0.1:8787", {"--yes"});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(), "-VornAPIBaseURLOverride must be an https address, or an http address on this "
                                 "computer, not \"127.0.0.1:8787\"\nRun with --help for more information.\n");
}

TEST(JourneyProgram, SaysThatThereIsNoConversation)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--handle", "+15559999999"});
    fix.link(sandbox);
    const auto program = fix.share(sandbox.url(), {"--yes"});
    EXPECT_EQ(program->exitCode(), 13);
    EXPECT_THAT(program->errors(), HasSubstr("\nNo conversation with Nimbrel on this Mac.\nMake sure Messages "));
}

TEST(JourneyProgram, SaysThatMessagesCannotBeRead)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program =
        fix.start(sandbox.url(), {"--yes"}, {{"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", fix.folder.path().string()}});
    EXPECT_EQ(program->exitCode(), 12);
    EXPECT_THAT(program->errors(), HasSubstr("\nMessages isn't set up on this Mac. Sign in to Messages with the Apple "
                                             "ID you text Nimbrel from, then come back.\n"));
    EXPECT_THAT(program->errors(), EndsWith("\nVorn can't read Messages on this Mac yet.\n"));
}

TEST(JourneyProgram, SaysThatItsUserHasNoHome)
{
    const LinkedFixture fix;
    const auto program = fix.start("http://127.0.0.1:9", {"--yes"}, {{"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", ""}});
    EXPECT_EQ(program->exitCode(), 12);
    EXPECT_EQ(program->errors(),
              "This user has no home folder, so there is no Messages history here. HOME can name one.\n");
    const auto status = fix.start("http://127.0.0.1:9", {"status"}, {{"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", ""}});
    EXPECT_EQ(status->exitCode(), 3) << "which reads no history";
}

TEST(JourneyProgram, SaysWhatTheNamedDatabaseIsNot)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    testing::writeFile(fix.folder / "notes.txt", "Dear diary");
    for (const auto& [name, text] :
         {std::pair("missing.db", "There is no database at @.\n"), std::pair("notes.txt", "@ is not a database.\n")}) {
        const std::string path = (fix.folder / name).string();
        const auto program = fix.start(sandbox.url(), {"--yes", "-VornMessagesDatabaseOverride", path});
        EXPECT_EQ(program->exitCode(), 12);
        EXPECT_EQ(program->errors(), std::string(text).replace(std::string(text).find('@'), 1, path));
    }
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("GET ")));
}

TEST(JourneyProgram, SaysThatTheUsersOwnDatabaseIsNone)
{
    const LinkedFixture fix;
    const auto own = fix.folder / "Library/Messages/chat.db";
    std::filesystem::create_directories(own.parent_path());
    testing::writeFile(own, "Dear diary");
    const auto program = fix.start("http://127.0.0.1:9", {"--yes"},
                                   {{"LD_PRELOAD", NO_USERS_MODULE}, {"HOME", fix.folder.path().string()}});
    EXPECT_EQ(program->exitCode(), 12);
    EXPECT_EQ(program->errors(), own.string() + " is not a database.\n");
}

TEST(JourneyProgram, NeedsAFolderForTemporaryFiles)
{
    const LinkedFixture fix;
    const std::string missing = (fix.folder / "missing").string();
    const auto program = fix.start("http://127.0.0.1:9", {"--yes"}, {{"TMPDIR", missing}});
    EXPECT_EQ(program->exitCode(), 1);
    EXPECT_EQ(program->errors(), "The folder for temporary files, " + missing +
                                     ", cannot be used: No such file or directory. TMPDIR names it.\n");
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST(JourneyProgram, DoesNotWaitForAServiceWhereNobodyWatches)
{
    const TerminalFixture fix;
    const auto program = fix.share("http://127.0.0.1:9", {"--yes"});
    EXPECT_EQ(program->exitCode(), 7);
    EXPECT_THAT(program->errors(), EndsWith("Getting a code…\nVorn can't reach the server right now.\n"
                                            "This Mac could not be linked. Run it again.\n"));
}

TEST(JourneyProgram, DoesNotWaitForAPhoneWithoutEndWhereNobodyWatches)
{
    const TerminalFixture fix;
    Sandbox sandbox({"--link-lifetime", "0.1"});
    const auto program = fix.share(sandbox.url(), {"--yes"});
    EXPECT_EQ(program->exitCode(), 3);
    EXPECT_THAT(program->errors(),
                EndsWith("\nNobody confirmed the link in time. Link this Mac first: vorn-terminal link\n"));
}

TEST(JourneyProgram, EndsWithASessionThatTheServiceHasEnded)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--fault", "quest=401", "--fault", "refresh=401"});
    fix.link(sandbox);
    const auto program = fix.share(sandbox.url(), {"--yes"});
    EXPECT_EQ(program->exitCode(), 3);
    EXPECT_THAT(program->errors(), EndsWith("Your Mac is no longer linked. Link it again.\n"));
    EXPECT_EQ(fix.kept(), std::nullopt);
}

struct Stop {
    std::vector<std::string> options;
    int status;
    const char* text;
};

TEST(JourneyProgram, SaysWhyTheUploadStopped)
{
    const std::vector<Stop> stops = {
        {{"--fault", "create-submission=422"}, 8, "The sandbox was told to answer 422."},
        {{"--fault", "create-submission=drop"}, 8, "You're offline. Run it again."},
        {{"--fault", "create-submission=garbage"}, 8, "The server sent an answer Vorn could not read."},
        {{"--fault", "create-submission=no-asset"}, 8, "The server opened no upload for the archive."},
        {{"--fault", "create-submission=truncate"}, 8, "You're offline. Run it again."},
        {{"--fault", "put-part=503"}, 8, "Part 1 of the upload failed (503)."},
        {{"--fault", "put-part=403"}, 8, "Part 1 of the upload failed (403)."},
        {{"--fault", "put-part=garbage"}, 8, "Part 1 of the upload was not acknowledged."},
        {{"--fault", "put-part=drop"}, 8, "You're offline. Run it again."},
        {{"--expired-first-urls", "--fault", "part-urls=500"}, 8, "The sandbox was told to answer 500."},
        {{"--fault", "complete=422"}, 8, "The sandbox was told to answer 422."},
        {{"--fault", "complete=drop"}, 8, "You're offline. Run it again."},
        {{"--fault", "put-part=500", "--fault", "abort=500"}, 8, "Part 1 of the upload failed (500)."},
        {{"--fault", "quest=500@2"}, 1, "The sandbox was told to answer 500."},
        {{"--fault", "quest=404@2"}, 5, "Nimbrel export isn't available yet. Check back soon."},
        {{"--max-bytes", "10"}, 8, "Your chat is larger than the upload limit."},
    };
    const LinkedFixture fix;
    for (const Stop& each : stops) {
        SCOPED_TRACE(::testing::PrintToString(each.options));
        Sandbox sandbox(each.options);
        fix.link(sandbox);
        const auto program = fix.share(sandbox.url(), {"--yes"});
        EXPECT_EQ(program->exitCode(), each.status);
        EXPECT_THAT(program->errors(), EndsWith(std::string(each.text) + "\n"));
        EXPECT_EQ(program->output(), "");
        EXPECT_THAT(fix.leftovers(), IsEmpty());
        std::filesystem::remove_all(fix.folder / "config"); // each asks for consent, and therefore for the quest twice
    }
}

TEST(JourneyProgram, SurvivesTemporaryFailures)
{
    const LinkedFixture fix;
    for (const auto& options : std::vector<std::vector<std::string>>{{"--expired-first-urls", "--token-lifetime", "1"},
                                                                     {"--fault", "submission=dropx1"}}) {
        SCOPED_TRACE(::testing::PrintToString(options));
        Sandbox sandbox(options);
        fix.link(sandbox);
        const auto program = fix.share(sandbox.url(), {"--yes"});
        EXPECT_EQ(program->exitCode(), 0) << program->errors();
    }
}

} // namespace
} // namespace vorn
