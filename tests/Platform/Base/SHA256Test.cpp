#include "Platform/Base/SHA256.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vorn {

// The examples of FIPS 180-4's companion document.
TEST(SHA256, GivesThePublishedDigests)
{
    SHA256 empty;
    EXPECT_EQ(empty.hexDigest(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    SHA256 abc;
    abc.update(bytesOf("a"));
    abc.update(bytesOf("bc"));
    EXPECT_EQ(abc.hexDigest(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(SHA256, OfAFileSpansItsPieces)
{
    const testing::TemporaryFolder folder;
    testing::writeFile(folder / "a", std::string(1'000'000, 'a'));
    testing::writeFile(folder / "b", std::string(3 * 1024 * 1024 + 1, 'b'));
    EXPECT_EQ(SHA256::hexDigestOfFile(folder / "a"),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    SHA256 whole;
    whole.update(bytesOf(std::string(3 * 1024 * 1024 + 1, 'b')));
    EXPECT_EQ(SHA256::hexDigestOfFile(folder / "b"), whole.hexDigest());
}

TEST(SHA256, OfAMissingFileFails)
{
    EXPECT_THROW(SHA256::hexDigestOfFile("/nonexistent/file"), std::filesystem::filesystem_error);
}

} // namespace vorn
