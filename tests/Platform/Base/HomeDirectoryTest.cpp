// A separate program: it replaces the user database.
#include "Platform/Base/FileManager.h"
#include "tests/support/ScopedEnvironment.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <pwd.h>

namespace {

std::string home;              ///< of every user; empty: no user has an entry
std::size_t sizeOfEntry = 100; ///< bytes
int interruptions = 0;         ///< still to come
int failure = 0;               ///< of the database

} // namespace

extern "C" int getpwuid_r(uid_t user, passwd* entry, char* room, std::size_t size, passwd** found)
{
    *found = nullptr;
    if (interruptions-- > 0) return EINTR;
    if (failure != 0) return failure;
    if (home.empty()) return 0;
    if (size < sizeOfEntry) return ERANGE;
    std::memcpy(room, home.c_str(), home.size() + 1);
    *entry = {};
    entry->pw_uid = user;
    entry->pw_dir = room;
    *found = entry;
    return 0;
}

namespace vorn {
namespace {

struct HomeDirectory : ::testing::Test {
    testing::ScopedEnvironment variable{"HOME", "/somewhere/else"};

    HomeDirectory()
    {
        home = "/home/sam";
        sizeOfEntry = 100;
        interruptions = failure = 0;
    }
    static std::filesystem::path found() { return FileManager::standard().homeDirectory(); }
};

TEST_F(HomeDirectory, IsWhatTheUserDatabaseSays)
{
    EXPECT_EQ(found(), "/home/sam");
    interruptions = 3;
    EXPECT_EQ(found(), "/home/sam");
}

TEST_F(HomeDirectory, IsFoundInALongEntry)
{
    sizeOfEntry = 1'000'000;
    EXPECT_EQ(found(), "/home/sam");
}

TEST_F(HomeDirectory, IsTheEnvironmentsForAUserWithoutAnEntry)
{
    home.clear();
    EXPECT_EQ(found(), "/somewhere/else");
    failure = EIO;
    EXPECT_EQ(found(), "/somewhere/else");
}

TEST_F(HomeDirectory, IsMissingWhereNobodySaysIt)
{
    home.clear();
    for (const char* value : {"", "relative"}) {
        const testing::ScopedEnvironment none("HOME", value);
        EXPECT_THROW(found(), std::filesystem::filesystem_error);
    }
    const testing::ScopedEnvironment none("HOME", "");
    home = "/home/sam";
    sizeOfEntry = 1'000'000'000;
    EXPECT_THROW(found(), std::filesystem::filesystem_error);
}

} // namespace
} // namespace vorn
