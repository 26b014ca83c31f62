#include "NimbrelExportKit/Links/LinkDetector.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::ElementsAre;

// Links that both detectors find, the system's and our own.

TEST(LinkDetector, FindsAddressesInOrderRepeatsIncluded)
{
    const auto detector = LinkDetector::make();
    ASSERT_NE(detector, nullptr);
    std::vector<std::string> urls;
    detector->find("See https://example.com/b and https://example.com/a, then https://example.com/b.", urls);
    EXPECT_THAT(urls, ElementsAre("https://example.com/b", "https://example.com/a", "https://example.com/b"));
}

TEST(LinkDetector, AppendsToWhatIsThere)
{
    const auto detector = LinkDetector::make();
    ASSERT_NE(detector, nullptr);
    std::vector<std::string> urls{"kept"};
    detector->find("https://example.com/", urls);
    detector->find("no link", urls);
    EXPECT_THAT(urls, ElementsAre("kept", "https://example.com/"));
}

TEST(LinkDetector, GivesAddressesWithoutASchemeAsHTTP)
{
    const auto detector = LinkDetector::make();
    ASSERT_NE(detector, nullptr);
    std::vector<std::string> urls;
    detector->find("www.example.com/menu", urls);
    EXPECT_THAT(urls, ElementsAre("http://www.example.com/menu"));
}

} // namespace
} // namespace vorn
