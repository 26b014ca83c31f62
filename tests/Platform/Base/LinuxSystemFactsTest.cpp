#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/linux/ComputerName.h"
#include "tests/support/ScopedEnvironment.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ScopedEnvironment;

struct Case {
    std::string name, given, expected;
};

TEST(ComputerName, IsThePrettyHostNameAsAShellReadsIt)
{
    const std::vector<Case> cases = {
        {"plain", "PRETTY_HOSTNAME=Studio\n", "Studio"},
        {"double quotes", "PRETTY_HOSTNAME=\"Ada's Laptop\"\n", "Ada's Laptop"},
        {"single quotes", "PRETTY_HOSTNAME='say \"hi\" \\n'", "say \"hi\" \\n"},
        {"escapes between double quotes", R"(PRETTY_HOSTNAME="a \"b\" \$5 \\ \n")", R"(a "b" $5 \ \n)"},
        {"escapes without quotes", R"(PRETTY_HOSTNAME=Ada\'s\ Laptop)", "Ada's Laptop"},
        {"pieces", R"(PRETTY_HOSTNAME="Ada"'s'\ Mac)", "Adas Mac"},
        {"backslash at the end", "PRETTY_HOSTNAME=a\\", "a\\"},
        {"other lines", "# PRETTY_HOSTNAME=no\nICON_NAME=computer\n  PRETTY_HOSTNAME=yes\r\nCHASSIS=laptop\n", "yes"},
        {"the last one", "PRETTY_HOSTNAME=first\nPRETTY_HOSTNAME=second", "second"},
        {"emoji", "PRETTY_HOSTNAME=\"Ada’s 💻\"\n", "Ada’s 💻"},
        {"ill-formed bytes", "PRETTY_HOSTNAME=a\xFF\n", "a\uFFFD"},
        {"longer key", "PRETTY_HOSTNAME_OLD=no\nMY_PRETTY_HOSTNAME=no\n", ""},
        {"spaces only", "PRETTY_HOSTNAME=\"  \"\n", ""},
        {"nothing", "", ""},
    };
    for (const auto& [name, given, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(prettyHostName(given), expected);
    }
}

TEST(ComputerName, IsElseTheHostName)
{
    EXPECT_EQ(computerName("PRETTY_HOSTNAME=Studio", "studio-1"), "Studio");
    EXPECT_EQ(computerName("PRETTY_HOSTNAME=", "studio-1"), "studio-1");
    EXPECT_EQ(computerName("", "(none)"), "");
    EXPECT_EQ(computerName("", ""), "");
}

TEST(TimeZoneIdentifier, FollowsTheEnvironment)
{
    const std::vector<Case> cases = {
        {"name", "Europe/Berlin", "Europe/Berlin"},
        {"colon", ":America/New_York", "America/New_York"},
        {"file", "/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo"},
        {"folder of zones without leap seconds", "posix/Europe/Paris", "Europe/Paris"},
        {"old name", "Asia/Calcutta", "Asia/Calcutta"},
        {"UTC", "UTC", "UTC"},
        {"rule of whole hours", "XYZ-3", "Etc/GMT-3"},
        {"rule to the west", "<-05>5", "Etc/GMT+5"},
        {"rule with summer time", "CET-1CEST,M3.5.0,M10.5.0/3", "Etc/GMT-1"},
        {"rule of half hours", "XYZ-5:30", "Etc/UTC"},
        {"unknown", "Nowhere/Land", "Etc/UTC"},
        {"ill-formed bytes", "\xFF\xFE", "Etc/UTC"},
        {"empty", "", "Etc/UTC"},
    };
    for (const auto& [name, given, expected] : cases) {
        SCOPED_TRACE(name);
        const ScopedEnvironment zone("TZ", given);
        EXPECT_EQ(timeZoneIdentifier(), expected);
    }
}

TEST(TimeZoneIdentifier, IsElseTheSystems)
{
    const ScopedEnvironment zone("TZ", "");
    unsetenv("TZ");
    EXPECT_NE(timeZoneIdentifier(), "");
}

TEST(LocaleIdentifier, FollowsTheEnvironment)
{
    const ScopedEnvironment language("LANG", "de_DE.UTF-8");
    const ScopedEnvironment none("LC_MESSAGES", "");
    const ScopedEnvironment all("LC_ALL", "");
    EXPECT_EQ(localeIdentifier(), "de-DE");
    const ScopedEnvironment messages("LC_MESSAGES", "fr_CA.UTF-8");
    EXPECT_EQ(localeIdentifier(), "fr-CA");
    const ScopedEnvironment everything("LC_ALL", "C.UTF-8");
    EXPECT_EQ(localeIdentifier(), "en-US");
}

TEST(LocaleIdentifier, IsAnotherForDatesWhereTheUserSetsOne)
{
    const ScopedEnvironment language("LANG", "en_US.UTF-8");
    const ScopedEnvironment all("LC_ALL", "");
    const ScopedEnvironment none("LC_MESSAGES", "");
    const ScopedEnvironment dates("LC_TIME", "de_DE.UTF-8");
    EXPECT_EQ(localeIdentifier(), "en-US");
    EXPECT_EQ(dateLocaleIdentifier(), "de-DE");
    const ScopedEnvironment unset("LC_TIME", "");
    EXPECT_EQ(dateLocaleIdentifier(), "en-US");
}

TEST(LocaleIdentifier, IsThatOfCProgramsWithoutAnEnvironment)
{
    const ScopedEnvironment language("LANG", "");
    const ScopedEnvironment messages("LC_MESSAGES", "");
    const ScopedEnvironment all("LC_ALL", "");
    EXPECT_EQ(localeIdentifier(), "en-US");
}

} // namespace
} // namespace vorn
