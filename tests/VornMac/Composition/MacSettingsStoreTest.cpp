#include "VornMac/Composition/SettingsStore.h"

#include "VornMac/Composition/SettingsDefaults.h"
#include "VornMacCore/Wire/Application.h"
#include "tests/VornMac/Composition/MacPreferences.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <vector>

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using Type = CFDouble::Type;
using Value = MacPreferences::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

/// The domain as a user names it: "defaults write app.vorn.mac …".
constexpr auto domain = "app.vorn.mac";

class MacSettingsStore : public ::testing::Test {
protected:
    MacSettingsStore() { macPreferences() = {}; }
    ~MacSettingsStore() override { EXPECT_EQ(liveCFObjects(), before_) << "objects leaked"; }

    /// Made as the programs make theirs. Outside the bundle, as here, the identifier is the built-in one.
    static SettingsDefaults defaults(const std::map<std::string, std::string>& line = {})
    {
        return SettingsDefaults::forRun(line, bundleIdentifier(), Log("test", "app"));
    }
    static void write(const std::string& key, const Value& value) { macPreferences().kept[domain][key] = value; }

private:
    const std::size_t before_ = liveCFObjects();
};

TEST_F(MacSettingsStore, ReadsTheTextsThatDefaultsHasWritten)
{
    write("VornAPIBaseURLOverride", {Type::string, "http://127.0.0.1:8787"});
    EXPECT_EQ(defaults().text("VornAPIBaseURLOverride"), "http://127.0.0.1:8787");
    EXPECT_EQ(defaults().text("Missing"), std::nullopt);
}

TEST_F(MacSettingsStore, ReadsTheBooleansThatDefaultsHasWritten)
{
    const std::vector<std::pair<Value, bool>> cases{
        {{Type::boolean, "true"}, true}, {{Type::boolean, "false"}, false}, {{Type::string, "YES"}, true},
        {{Type::string, "NO"}, false},   {{Type::number, "1"}, true},       {{Type::number, "0"}, false},
        {{Type::number, "0.5"}, true},   {{Type::data, "YES"}, false},      {{Type::dictionary, ""}, false},
    };
    for (const auto& [value, isTrue] : cases) {
        SCOPED_TRACE(value.bytes);
        write("VornReduceMotion", value);
        EXPECT_EQ(defaults().boolean("VornReduceMotion"), isTrue);
        EXPECT_EQ(defaults().text("VornReduceMotion").has_value(), value.type == Type::string);
    }
}

TEST_F(MacSettingsStore, KeepsUnderTheKeysThatItIsGiven)
{
    defaults().setBoolean("consent.vorn-mac-nimbrel-1.user/42", true);
    defaults().setBoolean("", false);
    defaults().setText("Place", "120 80 1180 760");
    EXPECT_THAT(macPreferences().kept,
                ElementsAre(Pair(domain, UnorderedElementsAre(
                                             Pair("consent.vorn-mac-nimbrel-1.user/42", Value{Type::boolean, "true"}),
                                             Pair("", Value{Type::boolean, "false"}),
                                             Pair("Place", Value{Type::string, "120 80 1180 760"})))));
    EXPECT_TRUE(defaults().boolean("consent.vorn-mac-nimbrel-1.user/42"));
    EXPECT_EQ(defaults().text("Place"), "120 80 1180 760");
}

TEST_F(MacSettingsStore, SeesWhatAnotherProcessChanges)
{
    const auto reader = defaults();
    EXPECT_EQ(reader.text("Key"), std::nullopt);
    write("Key", {Type::string, "first"});
    EXPECT_EQ(reader.text("Key"), "first");
    write("Key", {Type::string, "another"});
    EXPECT_EQ(reader.text("Key"), "another");
}

TEST_F(MacSettingsStore, LogsWhatCannotBeKept)
{
    const CapturedLog log;
    auto own = defaults();
    macPreferences().canWrite = false;
    own.setBoolean("consent.user", true);
    EXPECT_TRUE(own.boolean("consent.user"));
    own.setText("\xFF", "value");
    EXPECT_EQ(own.text("\xFF"), "value");
    EXPECT_EQ(own.text("\xFE"), std::nullopt);
    own.setText("Place", "\xFF");
    EXPECT_EQ(own.text("Place"), "\xFF");
    EXPECT_THAT(log.lines(), ElementsAre("[app] user defaults save failed: they cannot be written",
                                         "[app] user defaults save failed: the key is not text",
                                         "[app] user defaults save failed: the value is not text"));
    EXPECT_THAT(macPreferences().kept, IsEmpty());
}

TEST_F(MacSettingsStore, KeepsAgainOnceThatIsPossible)
{
    auto own = defaults();
    macPreferences().canWrite = false;
    own.setBoolean("key", true);
    macPreferences().canWrite = true;
    own.setBoolean("key", true);
    EXPECT_TRUE(defaults().boolean("key"));
    write("key", {Type::boolean, "false"});
    EXPECT_FALSE(own.boolean("key"));
}

TEST_F(MacSettingsStore, IsLeftAloneByARunWithAFileOfItsOwn)
{
    const TemporaryFolder folder;
    const std::map<std::string, std::string> line{{"VornSettingsFile", folder / "settings.ini"}};
    write("Key", {Type::string, "the user's own"});
    EXPECT_EQ(defaults(line).text("Key"), std::nullopt);
    defaults(line).setText("Key", "the run's");
    EXPECT_EQ(defaults(line).text("Key"), "the run's");
    EXPECT_EQ(defaults().text("Key"), "the user's own");
    EXPECT_THAT(folder.names(), ElementsAre("settings.ini"));
}

} // namespace
} // namespace vorn::testing
