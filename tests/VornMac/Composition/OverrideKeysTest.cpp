#include "VornMac/Composition/OverrideKeys.h"

#include "VornMac/Composition/LayeredDefaults.h"
#include "VornMac/Composition/SettingsDefaults.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using overrides::Program;
using Words = std::vector<std::string>;

constexpr const char* inTerminal = "only -VornAPIBaseURLOverride, -VornMessagesDatabaseOverride and -VornSettingsFile";
constexpr const char* inWindow = "only -VornAPIBaseURLOverride, -VornMessagesDatabaseOverride, -VornSettingsFile, "
                                 "-VornAppearance, -VornReduceMotion and -VornForgetsSession";

std::string mistake(Words words, Program program = Program::terminal)
{
    const auto pairs = ArgumentDefaults::takenFrom(words);
    return overrides::mistakeOnLine(pairs, words, program).value_or("");
}

TEST(OverrideKeys, RefuseKeysThatDoNotExist)
{
    EXPECT_EQ(mistake({"-VornMesagesDatabaseOverride", "chat.db"}),
              std::string("There is no -VornMesagesDatabaseOverride, ") + inTerminal);
    EXPECT_EQ(mistake({"-VornAPIBaseURLOverride=http://127.0.0.1:1", "status"}),
              std::string("There is no -VornAPIBaseURLOverride=http://127.0.0.1:1, ") + inTerminal);
    EXPECT_EQ(mistake({"link", "-Database"}), std::string("There is no -Database, ") + inTerminal);
    EXPECT_EQ(mistake({"-Vorn\x1B[2J", "x"}), std::string("There is no -Vorn\uFFFD[2J, ") + inTerminal);
    EXPECT_EQ(mistake({"-VornForgetSession", "YES"}, Program::window),
              std::string("There is no -VornForgetSession, ") + inWindow);
}

TEST(OverrideKeys, RefuseInATerminalWhatOnlyTheWindowKnows)
{
    for (const char* key : {"-VornAppearance", "-VornReduceMotion", "-VornForgetsSession"}) {
        EXPECT_EQ(mistake({key, "1"}), std::string("There is no ") + key + ", " + inTerminal);
    }
    EXPECT_EQ(
        mistake({"-VornAppearance", "dark", "-VornReduceMotion", "1", "-VornForgetsSession", "no"}, Program::window),
        "");
}

TEST(OverrideKeys, RefuseValuesThatAreNotFit)
{
    const std::string address =
        "-VornAPIBaseURLOverride must be an https address, or an http address on this computer, ";
    for (const auto& [value, shown] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {"nonsense", "nonsense"},
             {"127.0.0.1:8787", "127.0.0.1:8787"},
             {"http://192.168.1.2:8787", "http://192.168.1.2:8787"},
             {"https://user@host.example", "https://user@host.example"},
             {"https://host.example/?q", "https://host.example/?q"},
             {"-VornMessagesDatabaseOverride", "-VornMessagesDatabaseOverride"},
         }) {
        EXPECT_EQ(mistake({"-VornAPIBaseURLOverride", value}), address + "not \"" + shown + "\"");
    }
    EXPECT_EQ(mistake({"-VornMessagesDatabaseOverride", ""}), "-VornMessagesDatabaseOverride must be a file, not \"\"");
    EXPECT_EQ(mistake({"-VornMessagesDatabaseOverride", "--yes"}),
              "-VornMessagesDatabaseOverride must be a file, not \"--yes\"");
    EXPECT_EQ(mistake({"-VornAppearance", "blue"}, Program::window),
              "-VornAppearance must be light or dark, not \"blue\"");
    EXPECT_EQ(mistake({"-VornForgetsSession", "maybe"}, Program::window),
              "-VornForgetsSession must be YES or NO, not \"maybe\"");
}

TEST(OverrideKeys, RefuseAKeyWithoutAValue)
{
    EXPECT_EQ(mistake({"link", "-VornAPIBaseURLOverride"}), "-VornAPIBaseURLOverride needs a value");
}

TEST(OverrideKeys, LetThroughWhatIsFitAndWhatIsTheSystems)
{
    EXPECT_EQ(mistake({"-VornAPIBaseURLOverride", "http://localhost:1", "-VornMessagesDatabaseOverride", "./-chat.db",
                       "link"}),
              "");
    EXPECT_EQ(mistake({"-NSQuitAlwaysKeepsWindows", "NO", "-AppleLanguages", "(de)", "-psn_0_1"}, Program::window), "");
    EXPECT_EQ(mistake({"--", "-Key"}), "");
}

TEST(OverrideKeys, LookAtTheUsersSettingsToo)
{
    const testing::TemporaryFolder folder;
    SettingsDefaults settings(std::filesystem::path(folder / "settings.ini"), Log("test", "app"));
    EXPECT_EQ(overrides::mistakeIn(settings, Program::terminal), std::nullopt);
    settings.setText("VornAPIBaseURLOverride", "htp://127.0.0.1");
    EXPECT_EQ(overrides::mistakeIn(settings, Program::terminal),
              "The setting VornAPIBaseURLOverride must be an https address, or an http address on this computer, "
              "not \"htp://127.0.0.1\"");
    const LayeredDefaults overridden({{"VornAPIBaseURLOverride", "http://127.0.0.1"}}, settings);
    EXPECT_EQ(overrides::mistakeIn(overridden, Program::terminal), std::nullopt);
}

} // namespace
} // namespace vorn
