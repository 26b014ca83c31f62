#include "VornMac/Composition/SettingsKey.h"

#include <set>

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(SettingsKey, IsAPathOfTheKeysParts)
{
    EXPECT_EQ(settingsKey("VornAPIBaseURLOverride"), "VornAPIBaseURLOverride");
    EXPECT_EQ(settingsKey("consent.vorn-mac-nimbrel-1.user_42"), "consent/vorn-mac-nimbrel-1/user_42");
}

TEST(SettingsKey, EscapesWhatCouldBeMistaken)
{
    EXPECT_EQ(settingsKey("a/b"), "a%2fb");
    EXPECT_EQ(settingsKey("a\\b"), "a%5cb");
    EXPECT_EQ(settingsKey("a%2fb"), "a%252fb");
    EXPECT_EQ(settingsKey(".a."), "%2ea%2e");
    EXPECT_EQ(settingsKey("a..b"), "a%2e%2eb");
    EXPECT_EQ(settingsKey("\xC2\xB7"), "%c2%b7");
    EXPECT_EQ(settingsKey("\xFF"), "%ff");
    EXPECT_EQ(settingsKey(""), "%");
}

TEST(SettingsKey, IsAnotherForEveryKeyOfFourSigns)
{
    constexpr std::string_view signs = "a./%2eA";
    std::set<QString> keys;
    std::size_t count = 1;
    keys.insert(settingsKey(""));
    std::vector<std::string> longer = {""};
    for (int length = 1; length <= 4; ++length) {
        std::vector<std::string> next;
        for (const std::string& start : longer)
            for (const char sign : signs) next.push_back(start + sign);
        for (const std::string& key : next) keys.insert(settingsKey(key));
        count += next.size();
        longer = next;
    }
    EXPECT_EQ(keys.size(), count);
}

} // namespace
} // namespace vorn
