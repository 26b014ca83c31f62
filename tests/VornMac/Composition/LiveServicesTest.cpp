#include "VornMac/Composition/LiveServices.h"

#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

class LiveServicesTest : public ::testing::Test {
protected:
    RunDefaults& defaults(LayeredDefaults::Line line)
    {
        line.emplace("VornSettingsFile", home_ / "settings.ini"); // not those of whoever runs the tests
        return defaults_.emplace(std::move(line));
    }

    AppServices services(LayeredDefaults::Line line, bool keepsSession = true)
    {
        UserDefaults& given = defaults(std::move(line)).get();
        services_.emplace(given, messagesDatabase(given), LiveServices::Options{.keepsSession = keepsSession});
        return services_->forModel(context_);
    }

    testing::TemporaryFolder home_;

private:
    testing::ScopedEnvironment temporary_{"TMPDIR", home_ / ""};
    MainContext context_;
    std::optional<RunDefaults> defaults_;
    std::optional<LiveServices> services_;
};

TEST_F(LiveServicesTest, KeepTheSessionInTheKeychain)
{
    EXPECT_NE(dynamic_cast<RememberingTokenStore*>(services({}).tokens.get()), nullptr);
}

TEST_F(LiveServicesTest, KeepTheSessionForTheRunAloneWhenToldSo)
{
    EXPECT_NE(dynamic_cast<InMemoryTokenStore*>(services({}, false).tokens.get()), nullptr);
}

TEST_F(LiveServicesTest, KeepTheTerminalsSessionApartWhereTheKeychainAsksBetweenPrograms)
{
    for (const bool keepsProgramsApart : {false, true})
        EXPECT_EQ(sessionItem(keepsProgramsApart, true), (KeychainItem{"app.vorn.mac", "desktop-session"}));
    EXPECT_EQ(sessionItem(false, false), (KeychainItem{"app.vorn.mac", "desktop-session"}));
    EXPECT_EQ(sessionItem(true, false), (KeychainItem{"app.vorn.mac.terminal", "desktop-session"}));
}

TEST_F(LiveServicesTest, KeepSettingsWhereTheCommandLineSays)
{
    services({}).defaults->setBoolean("key", true);
    EXPECT_TRUE(std::filesystem::exists(home_ / "settings.ini"));
}

TEST_F(LiveServicesTest, ReadTheDatabaseOfTheCommandLine)
{
    EXPECT_EQ(services({{"VornMessagesDatabaseOverride", "/elsewhere/chat.db"}}).messagesDatabase,
              "/elsewhere/chat.db");
    EXPECT_TRUE(services({}).messagesDatabase.native().ends_with("/Library/Messages/chat.db"));
}

TEST_F(LiveServicesTest, RunTheJobsOfTheModelOnTheGivenContext)
{
    MainContext context;
    RunDefaults& given = defaults({});
    LiveServices live(given.get(), home_ / "chat.db", {});
    EXPECT_EQ(live.forModel(context).context, &context);
}

TEST_F(LiveServicesTest, OnlyADefaultKeepsTheWindowFromTheKeychain)
{
    EXPECT_TRUE(keepsSession(defaults({}).get()));
    EXPECT_TRUE(keepsSession(defaults({{"VornForgetsSession", "NO"}}).get()));
    EXPECT_FALSE(keepsSession(defaults({{"VornForgetsSession", "YES"}}).get()));
}

} // namespace
} // namespace vorn
