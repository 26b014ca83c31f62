#include "Platform/Base/UUID.h"

#include <gmock/gmock.h>

namespace vorn {

TEST(UUID, IsCanonicalUpperCaseVersionFour)
{
    EXPECT_THAT(newUUID(),
                ::testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
}

TEST(UUID, IsNewEachTime)
{
    EXPECT_NE(newUUID(), newUUID());
}

TEST(UUID, IsKnownByItsForm)
{
    EXPECT_TRUE(isUUID(newUUID()));
    for (const char* other : {"", "0F3A41C2", "0f3a41c2-9b7d-4e55-8a10-5c6d7e8f9a0b",
                              "0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B~", "0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0G",
                              "------------------------------------", "0F3A41C2A9B7DA4E55A8A10A5C6D7E8F9A0B"})
        EXPECT_FALSE(isUUID(other)) << other;
}

} // namespace vorn
