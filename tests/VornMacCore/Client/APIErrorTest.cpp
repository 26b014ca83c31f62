#include "VornMacCore/Client/APIError.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorn {
namespace {

using E = APIError;

E http(int status, std::optional<std::string> message = std::nullopt, std::optional<std::string> code = std::nullopt)
{
    return E(E::HTTP{status, std::move(message), std::move(code)});
}

TEST(APIError, DescribesItselfForTheLog)
{
    EXPECT_STREQ(http(500, "The archive is locked.", "locked").what(), "HTTP 500: The archive is locked.");
    EXPECT_STREQ(http(429, "").what(), "HTTP 429: ");
    EXPECT_STREQ(http(500).what(), "HTTP 500");
    EXPECT_STREQ(http(302, std::nullopt, "code alone").what(), "HTTP 302");
    EXPECT_STREQ(http(-1).what(), "HTTP -1");
    EXPECT_STREQ(http(404, "Cannot GET /api/v1/desktop/nimbrel").what(),
                 "HTTP 404: Cannot GET /api/v1/desktop/nimbrel");
    EXPECT_STREQ(E(E::NotSignedIn{}).what(), "no session");
    EXPECT_STREQ(E(E::SessionExpired{}).what(), "session not accepted");
    EXPECT_STREQ(E(E::SessionChanged{}).what(), "session of another user");
    EXPECT_STREQ(E(E::InvalidResponse{}).what(), "unreadable answer");
}

TEST(APIError, IsLaneOffAt404Only)
{
    EXPECT_TRUE(http(404).isLaneOff());
    EXPECT_TRUE(http(404, "gone", "gone").isLaneOff());
    for (const E& other : {http(403), http(410), http(500), E(E::NotSignedIn{}), E(E::SessionExpired{}),
                           E(E::SessionChanged{}), E(E::InvalidResponse{})}) {
        EXPECT_FALSE(other.isLaneOff()) << other.what();
    }
}

TEST(APIError, IsComparedByCaseAndPayload)
{
    const std::vector<E> different = {http(500),
                                      http(501),
                                      http(500, "message"),
                                      http(500, ""),
                                      http(500, std::nullopt, "code"),
                                      http(500, "message", "code"),
                                      E(E::NotSignedIn{}),
                                      E(E::SessionExpired{}),
                                      E(E::SessionChanged{}),
                                      E(E::InvalidResponse{})};
    for (std::size_t left = 0; left < different.size(); ++left) {
        for (std::size_t right = 0; right < different.size(); ++right)
            EXPECT_EQ(different[left] == different[right], left == right) << left << " and " << right;
    }
}

TEST(APIError, KnowsItsCase)
{
    EXPECT_TRUE(E(E::SessionChanged{}).is<E::SessionChanged>());
    EXPECT_FALSE(E(E::SessionChanged{}).is<E::SessionExpired>());
    EXPECT_EQ(std::get<E::HTTP>(http(409, "m", "c").reason()), (E::HTTP{409, "m", "c"}));
}

TEST(APIError, IsCaughtAsAStandardException)
{
    try {
        throw http(503);
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "HTTP 503");
    }
}

} // namespace
} // namespace vorn
