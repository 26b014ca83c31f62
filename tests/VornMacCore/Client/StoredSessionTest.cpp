#include "VornMacCore/Client/StoredSession.h"

#include "VornMacCore/Wire/JSONErrors.h"

#include <gtest/gtest.h>

#include <ostream>

namespace vorn {
namespace {

StoredSession ada()
{
    return {"token-canary-1", "refresh-canary-1", "user-ada", "Ada Ünal"};
}

TEST(StoredSession, IsOneJSONObjectWithFourKeys)
{
    EXPECT_EQ(
        ada().toJSON(),
        R"({"token":"token-canary-1","refreshToken":"refresh-canary-1","userId":"user-ada","displayName":"Ada Ünal"})");
}

TEST(StoredSession, ReadsBackAsItWas)
{
    const StoredSession odd("t\"\\/\n", "", "user ☃", std::string("a\0b", 3));
    EXPECT_EQ(StoredSession::fromJSON(ada().toJSON()), ada());
    EXPECT_EQ(StoredSession::fromJSON(odd.toJSON()), odd);
}

TEST(StoredSession, IgnoresKeysItDoesNotKnow)
{
    EXPECT_EQ(StoredSession::fromJSON(R"({"version": 2, "displayName": "Ada Ünal", "userId": "user-ada",
                                          "refreshToken": "refresh-canary-1", "token": "token-canary-1"})"),
              ada());
}

TEST(StoredSession, IsComparedOverAllFields)
{
    for (std::string StoredSession::* const field :
         {&StoredSession::token, &StoredSession::refreshToken, &StoredSession::userId, &StoredSession::displayName}) {
        StoredSession other = ada();
        EXPECT_EQ(other, ada());
        other.*field = "other";
        EXPECT_NE(other, ada());
    }
}

TEST(StoredSession, TakesWhatAnApprovedLinkHandsOver)
{
    EXPECT_EQ(StoredSession(DesktopSession{"token-canary-1", "refresh-canary-1", {"user-ada", "Ada Ünal"}}), ada());
}

TEST(StoredSession, IsNotWrittenWithTextThatIsIllFormed)
{
    for (std::string StoredSession::* const field :
         {&StoredSession::token, &StoredSession::refreshToken, &StoredSession::userId, &StoredSession::displayName}) {
        StoredSession broken = ada();
        broken.*field = "\xC3";
        EXPECT_THROW(broken.toJSON(), UnencodableJSON);
    }
}

struct BadText {
    const char* what;
    const char* text;
};

std::ostream& operator<<(std::ostream& out, const BadText& bad)
{
    return out << bad.what;
}

class UndecodableSession : public ::testing::TestWithParam<BadText> {};

TEST_P(UndecodableSession, IsRefused)
{
    EXPECT_THROW(StoredSession::fromJSON(GetParam().text), UndecodableJSON);
}

INSTANTIATE_TEST_SUITE_P(
    StoredSession, UndecodableSession,
    ::testing::Values(
        BadText{"NoToken", R"({"refreshToken": "r", "userId": "u", "displayName": "d"})"},
        BadText{"NoRefreshToken", R"({"token": "t", "userId": "u", "displayName": "d"})"},
        BadText{"NoUser", R"({"token": "t", "refreshToken": "r", "displayName": "d"})"},
        BadText{"NoDisplayName", R"({"token": "t", "refreshToken": "r", "userId": "u"})"},
        BadText{"NullToken", R"({"token": null, "refreshToken": "r", "userId": "u", "displayName": "d"})"},
        BadText{"NumberAsUser", R"({"token": "t", "refreshToken": "r", "userId": 7, "displayName": "d"})"},
        BadText{"OtherCase", R"({"Token": "t", "refreshToken": "r", "userId": "u", "displayName": "d"})"},
        BadText{"Array", R"([])"}, BadText{"Nothing", ""}, BadText{"BrokenOff", R"({"token": "t")"},
        BadText{"IllFormed",
                "{\"token\": \"\xFF\", \"refreshToken\": \"r\", \"userId\": \"u\", \"displayName\": \"d\"}"}),
    [](const auto& info) { return info.param.what; });

} // namespace
} // namespace vorn
