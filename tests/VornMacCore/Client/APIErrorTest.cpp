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

TEST(APIError, ShowsTheServicesWordsWhenItGaveSome)
{
    EXPECT_STREQ(http(500, "The archive is locked.", "locked").what(), "The archive is locked.");
    EXPECT_STREQ(http(429, "").what(), "");
}

TEST(APIError, NamesTheStatusWhenTheServiceSaidNothing)
{
    EXPECT_STREQ(http(500).what(), "The server answered 500.");
    EXPECT_STREQ(http(302, std::nullopt, "code alone").what(), "The server answered 302.");
    EXPECT_STREQ(http(-1).what(), "The server answered -1.");
}

TEST(APIError, KeepsItsOwnWordsForAFeatureThatIsOff)
{
    EXPECT_STREQ(http(404).what(), "Nimbrel export isn't available yet. Check back soon.");
    EXPECT_STREQ(http(404, "Cannot GET /api/v1/desktop/nimbrel").what(),
                 "Nimbrel export isn't available yet. Check back soon.");
}

TEST(APIError, TellsTheUserWhatHappened)
{
    EXPECT_STREQ(E(E::NotSignedIn{}).what(), "Your Mac is no longer linked. Link it again.");
    EXPECT_STREQ(E(E::SessionExpired{}).what(), "Your Mac is no longer linked. Link it again.");
    EXPECT_STREQ(E(E::SessionChanged{}).what(), "You signed in again, so this step was stopped.");
    EXPECT_STREQ(E(E::InvalidResponse{}).what(), "The server sent an answer Vorn could not read.");
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
        EXPECT_STREQ(error.what(), "The server answered 503.");
    }
}

} // namespace
} // namespace vorn
