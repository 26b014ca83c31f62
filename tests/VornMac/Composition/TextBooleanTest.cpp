#include "VornMac/Composition/TextBoolean.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(TextBoolean, CountsAsMacOSDoes)
{
    for (const char* text : {"YES", "yes", "Y", "true", "True", "t", "1", "2", "-1", "+3", "10", "007", " 1", "0.5"})
        EXPECT_TRUE(countsAsTrue(text)) << text;
    for (const char* text : {"", " ", "NO", "no", "false", "0", "000", "-0", "0.0", "on", "enabled", "no, yes"})
        EXPECT_FALSE(countsAsTrue(text)) << text;
}

} // namespace
} // namespace vorn
