#include "Tools/Terminal/TerminalOptions.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Command = TerminalOptions::Command;
using Background = TerminalOptions::Background;

auto parse(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "vorn-terminal");
    return parseTerminalOptions(static_cast<int>(arguments.size()), arguments.data());
}

TerminalOptions options(const std::vector<const char*>& arguments)
{
    const auto parsed = parse(arguments);
    if (const auto* end = std::get_if<TerminalOptionsEnd>(&parsed)) throw std::runtime_error(end->text);
    return std::get<TerminalOptions>(parsed);
}

TEST(TerminalOptions, ReadsTheCommands)
{
    EXPECT_EQ(options({"link"}).command, Command::link);
    EXPECT_EQ(options({"sign-out"}).command, Command::signOut);
    EXPECT_EQ(options({"status"}).command, Command::status);
    EXPECT_EQ(options({"status"}).submission, std::nullopt);
    EXPECT_EQ(options({"status", "sub_1"}).submission, "sub_1");
    const TerminalOptions share = options({});
    EXPECT_EQ(share.command, Command::share);
    EXPECT_FALSE(share.json);
    EXPECT_FALSE(share.yes);
    EXPECT_TRUE(share.keychain);
    EXPECT_EQ(share.background, std::nullopt);
}

TEST(TerminalOptions, ReadsTheOptions)
{
    EXPECT_TRUE(options({"--json"}).json);
    EXPECT_TRUE(options({"--yes"}).yes);
    EXPECT_FALSE(options({"--no-keychain"}).keychain);
    EXPECT_EQ(options({"--background", "light"}).background, Background::light);
    EXPECT_TRUE(options({"status", "--json"}).json);
    EXPECT_EQ(options({"link", "--background", "dark"}).background, Background::dark);
}

TEST(TerminalOptions, ReadsOverridesOfDefaultsAnywhere)
{
    for (const auto& line : std::vector<std::vector<const char*>>{
             {"-VornAPIBaseURLOverride", "http://127.0.0.1:1", "status", "sub_1"},
             {"status", "-VornAPIBaseURLOverride", "http://127.0.0.1:1", "sub_1"},
             {"status", "sub_1", "-VornAPIBaseURLOverride", "http://127.0.0.1:1"},
         }) {
        SCOPED_TRACE(::testing::PrintToString(line));
        EXPECT_EQ(options(line).submission, "sub_1");
        EXPECT_EQ(options(line).defaults.text("VornAPIBaseURLOverride"), "http://127.0.0.1:1");
    }
}

TEST(TerminalOptions, ReadsWhatToShow)
{
    const TerminalOptions all = options({"show"});
    EXPECT_EQ(all.command, TerminalOptions::Command::show);
    EXPECT_FALSE(all.search);
    EXPECT_FALSE(all.copy);
    EXPECT_EQ(options({"show", "--search", "two words"}).search, "two words");
    EXPECT_EQ(options({"show", "--search", ""}).search, "");
    EXPECT_EQ(options({"show", "--save", "x.zip"}).copy, "x.zip");
}

TEST(TerminalOptions, RefusesWhatMakesNoSense)
{
    struct Case {
        std::vector<const char*> arguments;
        const char* text;
    };
    const std::vector<Case> cases = {
        {{"fly"}, "There is no command \"fly\", only show, link, status or sign-out\n"},
        {{"fly\x1B[2J", "--json"}, "There is no command \"fly\uFFFD[2J\", only "},
        {{"--fly"}, "The following argument was not expected: --fly"},
        {{"upload", "chat.zip"}, "There is no command \"upload\", only "},
        {{"link", "--json"}, "The following argument was not expected: --json"},
        {{"link", "--background", "blue"}, "--background: must be dark or light, not \"blue\"\n"},
        {{"link", "--background", ""}, "--background: must be dark or light, not \"\"\n"},
        {{"link", "--background"}, "--background"},
        {{"link", "--no-keychain"}, "The following argument was not expected: --no-keychain"},
        {{"link", "status"}, ""},
        {{"--background", "light", "extra"}, "There is no command \"extra\", only "},
        {{"-VornMesagesDatabaseOverride", "chat.db"}, "There is no -VornMesagesDatabaseOverride, only "},
        {{"fly", "-VornAPIBaseURLOverride", "nonsense"}, "-VornAPIBaseURLOverride must be an https address"},
        {{"status", "-VornAPIBaseURLOverride"}, "-VornAPIBaseURLOverride needs a value"},
        {{"show", "--search"}, "--search"},
        {{"show", "--save", ""}, "--save must be a file: an archive is not for standard output\n"},
        {{"show", "--save", "-"}, "--save must be a file: an archive is not for standard output\n"},
        {{"show", "--save", "x.zip", "--search", "x"}, "--s"},
        {{"show", "--json"}, "The following argument was not expected: --json"},
        {{"status", "a/b"}, "SUBMISSION must be a submission's identifier, as it is printed after an upload"},
        {{"status", ".."}, "SUBMISSION must be a submission's identifier, as it is printed after an upload"},
        {{"status", ""}, "SUBMISSION must be a submission's identifier, as it is printed after an upload"},
        {{"status", "a?b"}, "SUBMISSION must be a submission's identifier, as it is printed after an upload"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(::testing::PrintToString(each.arguments));
        const auto parsed = parse(each.arguments);
        const auto* end = std::get_if<TerminalOptionsEnd>(&parsed);
        ASSERT_NE(end, nullptr);
        EXPECT_TRUE(end->isMistake);
        EXPECT_THAT(end->text, StartsWith(each.text));
        EXPECT_THAT(end->text, HasSubstr("\nRun with --help for more information.\n"));
    }
}

TEST(TerminalOptions, EndsWithTheHelpAndTheVersion)
{
    const auto help = std::get<TerminalOptionsEnd>(parse({"--help"}));
    EXPECT_FALSE(help.isMistake);
    for (const char* text : {"show ", "link ", "status ", "sign-out ", "--yes", "-VornAPIBaseURLOverride URL",
                             "-VornMessagesDatabaseOverride FILE", "-VornSettingsFile FILE", "Exit status: 0 done",
                             "128+N ended by signal N"}) {
        EXPECT_THAT(help.text, HasSubstr(text));
    }
    EXPECT_THAT(std::get<TerminalOptionsEnd>(parse({"status", "--help"})).text, HasSubstr("SUBMISSION"));
    EXPECT_FALSE(std::get<TerminalOptionsEnd>(parse({"-VornFly", "x", "--help"})).isMistake);
    const auto version = std::get<TerminalOptionsEnd>(parse({"--version"}));
    EXPECT_FALSE(version.isMistake);
    EXPECT_THAT(version.text, StartsWith("vorn-terminal "));
}

} // namespace
} // namespace vorn
