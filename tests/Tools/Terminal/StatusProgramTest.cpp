// Outputs and effects of status and sign-out.
#include "VornMacCore/Wire/Application.h"
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

constexpr const char* nowhere = "http://127.0.0.1:9";

TEST(StatusProgram, NeedsALink)
{
    const LinkedFixture fix;
    const auto program = fix.start(nowhere, {"status"});
    EXPECT_EQ(program->exitCode(), 3);
    EXPECT_EQ(fix.errorsBesideTheWait(*program), "This Mac is not linked. Link it first.\n");
    EXPECT_EQ(program->output(), "");
}

TEST(StatusProgram, SaysThatTheKeychainCannotBeReached)
{
    const TerminalFixture without;
    const auto none = without.start(nowhere, {"status"});
    EXPECT_EQ(none->exitCode(), 10);
    EXPECT_EQ(none->errors(), "There is no keychain here, or it does not answer. Vorn can't tell whether this Mac is "
                              "linked.\n");
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    fix.lockKeychain();
    const auto locked = fix.start(nowhere, {"status"});
    EXPECT_EQ(locked->exitCode(), 10);
    EXPECT_THAT(locked->errors(), EndsWith(" Vorn can't tell whether this Mac is linked.\n"));
}

TEST(StatusProgram, SaysWhoIsLinkedAndHowTheQuestStands)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"status"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    EXPECT_EQ(fix.errorsBesideTheWait(*program), "");
    EXPECT_THAT(program->output(), HasSubstr("Linked as       Sam Rivera\n"));
    EXPECT_THAT(program->output(), HasSubstr("  next upload   You can upload your chat.\n"
                                             "  reward        $12.50\n  upload limit  536.9 MB\n"));
}

TEST(StatusProgram, SaysHowASubmissionStands)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto upload = fix.share(sandbox.url(), {"--yes", "--json"});
    ASSERT_EQ(upload->exitCode(), 0) << upload->errors();
    const std::string id = testing::lastState(*upload, "submission").at("id");
    const auto program = fix.start(sandbox.url(), {"status", id, "--json"});
    EXPECT_EQ(program->exitCode(), 0) << program->errors();
    const auto result = nlohmann::json::parse(program->output());
    EXPECT_EQ(result.at("submission").at("status"), "approved");
    EXPECT_EQ(result.at("quest").at("availability"), "cooldown");
}

TEST(StatusProgram, SaysThatThereIsNoSuchSubmission)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    EXPECT_EQ(fix.start(sandbox.url(), {"status", "sub_x"})->exitCode(), 5);
}

TEST(SignOut, ForgetsAndTellsTheService)
{
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"sign-out"});
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(fix.errorsBesideTheWait(*program), "Signed out.\n");
    EXPECT_EQ(fix.kept(), std::nullopt);
    EXPECT_THAT(sandbox.log(), HasSubstr("POST /api/v1/auth/desktop/logout 200 "));
    const auto again = fix.start(sandbox.url(), {"sign-out"});
    EXPECT_EQ(again->exitCode(), 0);
    EXPECT_EQ(fix.errorsBesideTheWait(*again), "This Mac is not linked.\n");
}

TEST(SignOut, NeverFailsOnTheNetwork)
{
    const LinkedFixture fix;
    std::string url;
    {
        Sandbox sandbox;
        fix.link(sandbox);
        url = sandbox.url();
    }
    const auto program = fix.start(url, {"sign-out"});
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(fix.errorsBesideTheWait(*program), "Signed out.\n");
    EXPECT_EQ(fix.kept(), std::nullopt);
}

TEST(SignOut, SaysThatTheKeychainCannotBeReached)
{
    const TerminalFixture without;
    const auto none = without.start(nowhere, {"sign-out"});
    EXPECT_EQ(none->exitCode(), 10);
    EXPECT_EQ(none->errors(),
              "There is no keychain here, or it does not answer. This Mac may still be linked. Sign out "
              "again once the keychain can be reached.\n");
    const LinkedFixture fix;
    Sandbox sandbox;
    fix.link(sandbox);
    fix.lockKeychain();
    const auto locked = fix.start(sandbox.url(), {"sign-out"});
    EXPECT_EQ(locked->exitCode(), 10);
    EXPECT_THAT(locked->errors(),
                EndsWith(" This Mac may still be linked. Sign out again once the keychain can be reached.\n"));
    EXPECT_THAT(sandbox.log(), Not(HasSubstr("logout")));
}

TEST(SignOut, DoesNotWaitForAServiceThatHangs)
{
    const LinkedFixture fix;
    Sandbox sandbox({"--fault", "logout=hang"});
    fix.link(sandbox);
    const auto program = fix.start(sandbox.url(), {"sign-out"});
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_EQ(fix.kept(), std::nullopt);
}

TEST(StatusProgram, RefusesASettingThatIsNoAddress)
{
    const TerminalFixture fix;
    std::filesystem::create_directories(fix.folder / "config" / bundleIdentifier());
    testing::writeFile(fix.folder / "config" / bundleIdentifier() / "defaults.ini",
                       "[General]\nVornMessagesDatabaseOverride=\n");
    const auto program = fix.start(nowhere, {"status"});
    EXPECT_EQ(program->exitCode(), 2);
    EXPECT_EQ(program->errors(), "The setting VornMessagesDatabaseOverride must be a file, not \"\"\n");
}

} // namespace
} // namespace vorn
