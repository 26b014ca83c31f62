#include "Platform/Base/SystemFacts.h"

#include <gtest/gtest.h>

namespace vorn {

TEST(SystemVersion, ReadsUpToThreeNumbers)
{
    EXPECT_EQ(parseSystemVersion("14.5"), (SystemVersion{14, 5, 0}));
    EXPECT_EQ(parseSystemVersion("13.6.1"), (SystemVersion{13, 6, 1}));
    EXPECT_EQ(parseSystemVersion("6.1.0-18-amd64"), (SystemVersion{6, 1, 0}));
    EXPECT_EQ(parseSystemVersion("6.18.44.2"), (SystemVersion{6, 18, 44}));
    EXPECT_EQ(parseSystemVersion("15"), (SystemVersion{15, 0, 0}));
    EXPECT_EQ(parseSystemVersion("later"), (SystemVersion{0, 0, 0}));
}

TEST(SystemVersion, OfTheRunningSystemIsKnown)
{
    EXPECT_GT(systemVersion().major, 0);
}

} // namespace vorn
