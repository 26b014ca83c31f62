#include "VornMacCore/Client/UploadProgress.h"

#include <array>

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(UploadProgress, FractionGoesFromZeroToOne)
{
    struct Case {
        const char* name;
        UploadProgress progress;
        double fraction;
    };
    constexpr std::array cases{
        Case{"nothing yet", {0, 200}, 0},        Case{"a half", {100, 200}, 0.5},
        Case{"everything", {200, 200}, 1},       Case{"more than everything", {300, 200}, 1},
        Case{"an empty file", {0, 0}, 0},        Case{"more than an empty file", {10, 0}, 0},
        Case{"an impossible size", {10, -1}, 0}, Case{"a terabyte", {1LL << 39, 1LL << 40}, 0.5},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_DOUBLE_EQ(each.progress.fraction(), each.fraction);
    }
}

TEST(UploadProgress, IsAValue)
{
    EXPECT_EQ((UploadProgress{1, 2}), (UploadProgress{1, 2}));
    EXPECT_NE((UploadProgress{1, 2}), (UploadProgress{2, 2}));
    EXPECT_NE((UploadProgress{1, 2}), (UploadProgress{1, 3}));
}

} // namespace
} // namespace vorn
