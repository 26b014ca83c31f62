#include "Platform/Base/SystemFacts.h"

#include "tests/support/SystemTools.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace vorn {

TEST(SystemText, WritesThePatchNumberOnlyAboveZero)
{
    const std::pair<SystemVersion, const char*> cases[] = {
        {{14, 0, 0}, "macOS 14.0"},     {{14, 5, 0}, "macOS 14.5"},     {{13, 6, 1}, "macOS 13.6.1"},
        {{10, 15, 7}, "macOS 10.15.7"}, {{6, 1, 140}, "macOS 6.1.140"}, {{15, 0, 1}, "macOS 15.0.1"},
    };
    for (const auto& [system, expected] : cases) EXPECT_EQ(systemText(system), expected);
    EXPECT_NE(systemText(systemVersion()), "macOS 0.0");
}

TEST(SystemVersion, ReadsUpToThreeNumbers)
{
    EXPECT_EQ(parseSystemVersion("14.5"), (SystemVersion{14, 5, 0}));
    EXPECT_EQ(parseSystemVersion("13.6.1"), (SystemVersion{13, 6, 1}));
    EXPECT_EQ(parseSystemVersion("6.1.0-18-amd64"), (SystemVersion{6, 1, 0}));
    EXPECT_EQ(parseSystemVersion("6.18.44.2"), (SystemVersion{6, 18, 44}));
    EXPECT_EQ(parseSystemVersion("15"), (SystemVersion{15, 0, 0}));
    EXPECT_EQ(parseSystemVersion("later"), (SystemVersion{0, 0, 0}));
}

TEST(SystemVersion, IsThatOfTheRunningSystem)
{
    EXPECT_EQ(systemVersion(),
              parseSystemVersion(testing::systemTools::osVersion().substr(std::string("macOS ").size())));
}

TEST(ComputerName, IsThatOfThisComputer)
{
    EXPECT_EQ(computerName(), testing::systemTools::computerName());
}

TEST(LanguageTag, IsReadFromEverySystemsNamesOfLocales)
{
    struct Case {
        std::string name, tag;
    };
    const std::vector<Case> cases = {
        {"en_US", "en-US"},
        {"en-GB", "en-GB"},
        {"de", "de"},
        {"de_DE.UTF-8", "de-DE"},
        {"de_DE.UTF-8@euro", "de-DE"},
        {"nb_NO.ISO8859-1", "nb-NO"},
        {"sr_RS@latin", "sr-Latn-RS"},
        {"uz_UZ.UTF-8@cyrillic", "uz-Cyrl-UZ"},
        {"ca_ES.UTF-8@valencia", "ca-ES-valencia"},
        {"zh-Hans_CN", "zh-Hans-CN"},
        {"iw_IL", "he-IL"},
        {"en_US@rg=gbzzzz", "en-US-u-rg-gbzzzz"},
        {"en_GB@currency=EUR;calendar=gregorian", "en-GB-u-ca-gregory-cu-eur"},
        {"C", "en-US"},
        {"C.UTF-8", "en-US"},
        {"POSIX", "en-US"},
        {"en_US_POSIX", "en-US"},
        {"", "en-US"},
        {"@euro", "en-US"},
        {"%%%", "en-US"},
        {"toolongforalanguage_US", "en-US"},
        {std::string(1000, 'a'), "en-US"},
    };
    for (const auto& [name, tag] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(languageTag(name), tag);
    }
}

} // namespace vorn
