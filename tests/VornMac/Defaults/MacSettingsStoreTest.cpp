#include "VornMac/Defaults/SettingsStore.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(MacSettingsStore, IsThatOfTheBundleIdentifier)
{
    const testing::TemporaryFolder configuration;
    const testing::ScopedEnvironment variable("XDG_CONFIG_HOME", configuration.path().native());
    const auto settings = openSettings("com.vorn.mac");
    EXPECT_EQ(settings->organizationName(), "vorn.com") << "turned around on a Mac: com.vorn";
    EXPECT_EQ(settings->applicationName(), "mac");
    EXPECT_EQ(settings->scope(), QSettings::UserScope);
    EXPECT_FALSE(settings->fallbacksEnabled());
    settings->setValue("key", true);
    settings->sync();
    EXPECT_TRUE(openSettings("com.vorn.mac")->value("key").toBool());
    EXPECT_FALSE(openSettings("com.vorn.other")->contains("key"));
}

} // namespace
} // namespace vorn
