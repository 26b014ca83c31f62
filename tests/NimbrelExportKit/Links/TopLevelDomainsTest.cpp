#include "NimbrelExportKit/Links/TopLevelDomains.h"

#include <string>

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

TEST(TopLevelDomains, KnowsThoseThatExist)
{
    for (const std::string_view name :
         {"com", "de", "uk", "museum", "travelersinsurance", "zw", "aaa", "рф", "中国", "ck"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(isTopLevelDomain(name));
    }
}

TEST(TopLevelDomains, ComparesWithoutRegardToCase)
{
    for (const std::string_view name : {"COM", "Org", "РФ", "XN--P1AI", "xn--p1ai"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(isTopLevelDomain(name));
    }
}

TEST(TopLevelDomains, RefusesAllElse)
{
    for (const std::string_view name :
         {std::string_view(), std::string_view("x"), std::string_view("comm"), std::string_view("co m"),
          std::string_view("html"), std::string_view("txt"), std::string_view("js"), std::string_view("localhost"),
          std::string_view("123"), std::string_view("р"), std::string_view("co.uk"), std::string_view("com\0", 4),
          std::string_view("\0", 1), std::string_view("{")}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(isTopLevelDomain(name));
    }
    EXPECT_FALSE(isTopLevelDomain(std::string(500, 'c')));
}

TEST(TopLevelDomains, FindsOneInFrontOfUnspacedText)
{
    EXPECT_EQ(unspacedTopLevelDomainPrefix("中国の店"), std::string_view("中国").size());
    EXPECT_EQ(unspacedTopLevelDomainPrefix("みんな"), std::string_view("みんな").size());
    EXPECT_EQ(unspacedTopLevelDomainPrefix("東京の店"), 0U);
    EXPECT_EQ(unspacedTopLevelDomainPrefix("рф"), 0U) << "languages with spaces end their words themselves";
    EXPECT_EQ(unspacedTopLevelDomainPrefix("com"), 0U);
    EXPECT_EQ(unspacedTopLevelDomainPrefix(""), 0U);
}

} // namespace
} // namespace vorn::links
