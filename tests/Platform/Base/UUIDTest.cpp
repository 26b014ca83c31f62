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

} // namespace vorn
