#include "VornMacCore/Upload/UploadError.h"

#include <limits>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using PartRefused = UploadError::PartRefused;
using MissingETag = UploadError::MissingETag;
using NoAsset = UploadError::NoAsset;

TEST(UploadError, SaysWhatHappenedInOneSentence)
{
    EXPECT_STREQ(UploadError(PartRefused{3, 500}).what(), "Part 3 of the upload failed (500).");
    EXPECT_STREQ(UploadError(PartRefused{1, 0}).what(), "Part 1 of the upload failed (0).");
    EXPECT_STREQ(UploadError(PartRefused{1'234'567, 403}).what(), "Part 1234567 of the upload failed (403).");
    EXPECT_STREQ(UploadError(MissingETag{12}).what(), "Part 12 of the upload was not acknowledged.");
    EXPECT_STREQ(UploadError(MissingETag{std::numeric_limits<std::int64_t>::max()}).what(),
                 "Part 9223372036854775807 of the upload was not acknowledged.");
    EXPECT_STREQ(UploadError(NoAsset{}).what(), "The server opened no upload for the archive.");
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
