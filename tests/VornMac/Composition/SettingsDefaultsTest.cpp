#include "VornMac/Composition/SettingsDefaults.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <set>

#include <gmock/gmock.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Settings in a file: the system's would be those of the user who runs the tests.
struct SettingsDefaultsTest : ::testing::Test {
    testing::TemporaryFolder configuration;
    const fs::path folder = configuration / "com.vorn.test";
    const fs::path file = folder / "settings.ini";

    SettingsDefaults defaults() const { return {file, Log("test", "app")}; }
    void write(const std::string& content) const
    {
        fs::create_directories(folder);
        testing::writeFile(file, content);
    }
};

TEST_F(SettingsDefaultsTest, KeepsABooleanForLaterRuns)
{
    const std::string key = "consent.vorn-mac-nimbrel-1.user-42";
    EXPECT_FALSE(defaults().boolean(key));
    auto first = defaults();
    first.setBoolean(key, true);
    EXPECT_TRUE(first.boolean(key));
    EXPECT_TRUE(defaults().boolean(key));
    EXPECT_FALSE(defaults().boolean(key + "3"));
    defaults().setBoolean(key, false);
    EXPECT_FALSE(defaults().boolean(key));
    EXPECT_FALSE(first.boolean(key)) << "read anew";
}

TEST_F(SettingsDefaultsTest, KeepsATextForLaterRuns)
{
    for (const std::string text : {"120 80 1180 760", "true", "a, b", "@Invalid()", "\"\\\n;", ""}) {
        SCOPED_TRACE(text);
        defaults().setText("Place", text);
        EXPECT_EQ(defaults().text("Place"), text);
    }
}

TEST_F(SettingsDefaultsTest, KeepsItFromOthers)
{
    defaults().setBoolean("key", true);
    defaults().setBoolean("key", false); // replaces the file
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(SettingsDefaultsTest, ReadsWhatAPersonWrote)
{
    write("[General]\nVornAPIBaseURLOverride=http://127.0.0.1:8787/a?b=c\nOn=YES\nOff=NO\nOne=1\nList=a, b\n");
    EXPECT_EQ(defaults().text("VornAPIBaseURLOverride"), "http://127.0.0.1:8787/a?b=c");
    EXPECT_EQ(defaults().text("Missing"), std::nullopt);
    EXPECT_EQ(defaults().text("List"), std::nullopt) << "no text";
    EXPECT_TRUE(defaults().boolean("On"));
    EXPECT_TRUE(defaults().boolean("One"));
    EXPECT_FALSE(defaults().boolean("Off"));
    EXPECT_FALSE(defaults().boolean("List"));
}

TEST_F(SettingsDefaultsTest, SeesWhatAnotherProcessChanges)
{
    const auto reader = defaults();
    EXPECT_EQ(reader.text("Key"), std::nullopt);
    write("[General]\nKey=first\n");
    EXPECT_EQ(reader.text("Key"), "first");
    write("[General]\nKey=another\nMore=1\n");
    EXPECT_EQ(reader.text("Key"), "another");
}

/// Keys contain IDs from a service, which may hold anything.
const std::vector<std::string> keysAlike = {
    "",          "a",         "A",          "a.b",        "a/b",
    "a//b",      "/a",        "a/",         "a.",         ".a",
    "a..b",      "a\\b",      "a%b",        "a%2fb",      "a%2Fb",
    "a b",       "a=b",       "[a]",        "General",    "general",
    "General.a", "general.a", "%General.a", "a\n",        std::string("a\0b", 3),
    "ä",         "A\xCC\x88", "\xFF",       "\xFE",       "a;b",
    "#a",        "\"a\"",     "\xC2\xB7",   "@Variant(a)"};

TEST_F(SettingsDefaultsTest, LieInTheFileThatTheCommandLineNames)
{
    SettingsDefaults::forRun({{"VornSettingsFile", file.native()}}, "com.vorn.test", Log("test", "app"))
        .setText("Key", "value");
    EXPECT_EQ(defaults().text("Key"), "value");
}

TEST_F(SettingsDefaultsTest, TwoKeysNeverMeet)
{
    ASSERT_EQ(std::set(keysAlike.begin(), keysAlike.end()).size(), keysAlike.size());
    for (const std::string& set : keysAlike) {
        fs::remove_all(folder);
        defaults().setBoolean(set, true);
        for (const std::string& read : keysAlike)
            EXPECT_EQ(defaults().boolean(read), read == set)
                << ::testing::PrintToString(set) << " was set, " << ::testing::PrintToString(read) << " is read";
    }
}

TEST_F(SettingsDefaultsTest, ManyKeysLiveTogether)
{
    for (const std::string& key : keysAlike) defaults().setBoolean(key, true);
    for (const std::string& key : keysAlike) EXPECT_TRUE(defaults().boolean(key)) << ::testing::PrintToString(key);
}

TEST_F(SettingsDefaultsTest, WhatCannotBeKeptCountsForThisRunAndIsLogged)
{
    const testing::CapturedLog log;
    testing::writeFile(configuration / "com.vorn.test", "a file where the folder should be");
    auto own = defaults();
    own.setBoolean("consent.user", true);
    EXPECT_TRUE(own.boolean("consent.user"));
    EXPECT_FALSE(own.boolean("consent.other"));
    EXPECT_EQ(own.text("consent.user"), std::nullopt) << "no text";
    own.setText("Place", "yes");
    EXPECT_EQ(own.text("Place"), "yes");
    EXPECT_TRUE(own.boolean("Place"));
    EXPECT_THAT(log.lines(), Each("[app] user defaults save failed: they cannot be written"));
    EXPECT_THAT(log.lines(), SizeIs(2));
}

TEST_F(SettingsDefaultsTest, KeepsAgainOnceThatIsPossible)
{
    testing::writeFile(configuration / "com.vorn.test", "");
    auto own = defaults();
    own.setBoolean("key", true);
    fs::remove(configuration / "com.vorn.test");
    const testing::CapturedLog log;
    own.setBoolean("key", true);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_TRUE(defaults().boolean("key"));
    defaults().setBoolean("key", false);
    EXPECT_FALSE(own.boolean("key"));
}

TEST_F(SettingsDefaultsTest, SaysThatAForeignFileCannotBeUnderstood)
{
    write("no settings at all\n");
    const testing::CapturedLog log;
    auto own = defaults();
    own.setBoolean("key", true);
    EXPECT_TRUE(own.boolean("key"));
    EXPECT_THAT(log.lines(), ElementsAre("[app] user defaults save failed: the file cannot be understood"));
}

} // namespace
} // namespace vorn
