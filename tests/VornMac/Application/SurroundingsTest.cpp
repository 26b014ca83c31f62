#include "VornMac/Application/Surroundings.h"

#include "VornMacCore/Sessions/InMemoryTokenStore.h"
#include "VornMacCore/Sessions/RememberingTokenStore.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class SurroundingsTest : public ::testing::Test {
protected:
    AppServices services(LayeredDefaults::Line line)
    {
        line.emplace("VornSettingsFile", home_ / "settings.ini"); // not those of whoever runs the tests
        surroundings_.emplace(std::move(line), "/nowhere/VornMac", [] {});
        return surroundings_->services();
    }

    testing::TemporaryFolder home_;

private:
    testing::ScopedEnvironment temporary_{"TMPDIR", home_ / ""};
    std::optional<Surroundings> surroundings_;
};

TEST_F(SurroundingsTest, KeepTheSessionInTheKeychain)
{
    EXPECT_NE(dynamic_cast<RememberingTokenStore*>(services({}).tokens.get()), nullptr);
}

TEST_F(SurroundingsTest, KeepTheSessionForTheRunAloneWhenToldSo)
{
    const auto tokens = services({{"VornForgetsSession", "YES"}}).tokens;
    EXPECT_NE(dynamic_cast<InMemoryTokenStore*>(tokens.get()), nullptr);
}

TEST_F(SurroundingsTest, KeepSettingsWhereTheCommandLineSays)
{
    services({}).defaults->setBoolean("key", true);
    EXPECT_TRUE(std::filesystem::exists(home_ / "settings.ini"));
}

TEST_F(SurroundingsTest, ReadTheDatabaseOfTheCommandLine)
{
    EXPECT_EQ(services({{"VornMessagesDatabaseOverride", "/elsewhere/chat.db"}}).messagesDatabase,
              "/elsewhere/chat.db");
    EXPECT_TRUE(services({}).messagesDatabase.native().ends_with("/Library/Messages/chat.db"));
}

} // namespace
} // namespace vorn
