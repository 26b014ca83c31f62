#include "VornMac/Composition/SettingsDefaults.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;

/// What the user's own configuration folder holds after a run that set something.
std::vector<std::string> keptBy(const std::map<std::string, std::string>& line)
{
    const testing::TemporaryFolder configuration;
    const testing::ScopedEnvironment variable("XDG_CONFIG_HOME", configuration.path().native());
    SettingsDefaults::forRun(line, "com.vorn.test", Log("test", "app")).setBoolean("key", true);
    if (std::filesystem::exists(configuration / "com.vorn.test/defaults.ini")) return {"defaults.ini"};
    return configuration.names();
}

TEST(LinuxSettingsStore, IsAFileInTheUsersConfigurationFolder)
{
    EXPECT_THAT(keptBy({}), ElementsAre("defaults.ini"));
}

TEST(LinuxSettingsStore, IsLeftAloneByARunWithAFileOfItsOwn)
{
    const testing::TemporaryFolder folder;
    EXPECT_THAT(keptBy({{"VornSettingsFile", folder / "settings.ini"}}), ElementsAre());
    EXPECT_THAT(folder.names(), ElementsAre("settings.ini"));
}

} // namespace
} // namespace vorn
