#include "Platform/Desktop/SystemWorkspace.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(ApplicationOf, IsTheBundleThatHoldsTheProgram)
{
    EXPECT_EQ(applicationOf("/Applications/Vorn.app/Contents/MacOS/Vorn"), "/Applications/Vorn.app");
}

TEST(ApplicationOf, IsTheProgramWhereNoBundleHoldsIt)
{
    for (const char* path : {"/usr/bin/VornMac", "VornMac", "/", "", "/Vorn.app/VornMac", "/Vorn.app/Contents/VornMac",
                             "/Vorn/Contents/MacOS/Vorn", "/Vorn.app/Contents/MacOS/deeper/Vorn"})
        EXPECT_EQ(applicationOf(path), path);
}

} // namespace
} // namespace vorn
