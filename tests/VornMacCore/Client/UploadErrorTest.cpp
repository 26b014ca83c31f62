#include "VornMacCore/Client/UploadError.h"

#include <limits>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using PartRefused = UploadError::PartRefused;
using MissingETag = UploadError::MissingETag;
using NoAsset = UploadError::NoAsset;

TEST(UploadError, DescribesItselfForTheLog)
{
    EXPECT_STREQ(UploadError(PartRefused{3, 500}).what(), "part 3 refused with 500");
    EXPECT_STREQ(UploadError(PartRefused{1, 0}).what(), "part 1 refused with 0");
    EXPECT_STREQ(UploadError(MissingETag{std::numeric_limits<std::int64_t>::max()}).what(),
                 "part 9223372036854775807 without an ETag");
    EXPECT_STREQ(UploadError(NoAsset{}).what(), "submission without an asset");
}

TEST(UploadError, IsEqualWhenTheReasonIs)
{
    EXPECT_EQ(UploadError(PartRefused{3, 500}), UploadError(PartRefused{3, 500}));
    EXPECT_NE(UploadError(PartRefused{3, 500}), UploadError(PartRefused{4, 500}));
    EXPECT_NE(UploadError(PartRefused{3, 500}), UploadError(PartRefused{3, 403}));
    EXPECT_EQ(UploadError(MissingETag{3}), UploadError(MissingETag{3}));
    EXPECT_NE(UploadError(MissingETag{3}), UploadError(MissingETag{4}));
    EXPECT_NE(UploadError(MissingETag{3}), UploadError(PartRefused{3, 0}));
    EXPECT_EQ(UploadError(NoAsset{}), UploadError(NoAsset{}));
}

} // namespace
} // namespace vorn
