#include "NimbrelExportKit/Links/InternationalHost.h"

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

TEST(InternationalHost, IsAppendedAsResolversKnowIt)
{
    std::string url = "http://";
    EXPECT_TRUE(appendHost("bücher.de", url));
    EXPECT_EQ(url, "http://xn--bcher-kva.de");
    EXPECT_FALSE(appendHost("℀.de", url));
    EXPECT_EQ(url, "http://xn--bcher-kva.de");
}

TEST(InternationalHost, IsRewrittenWhereTheSystemEscapedIt)
{
    constexpr std::pair<std::string_view, std::string_view> urls[] = {
        {"https://b%C3%BCcher.de/%C3%A4", "https://xn--bcher-kva.de/%C3%A4"},
        {"https://b%c3%bccher.de", "https://xn--bcher-kva.de"},
        {"http://bücher.de:80?q", "http://xn--bcher-kva.de:80?q"},
        {"http://b%C3%BCcher.de./", "http://xn--bcher-kva.de./"},
        {"http://zo%C3%AB@b%C3%BCcher.de#a", "http://zo%C3%AB@xn--bcher-kva.de#a"},
        // These stay as they are.
        {"https://Example.com/%C3%A4@b%C3%BC.de", "https://Example.com/%C3%A4@b%C3%BC.de"},
        {"http://zo%C3%AB@example.com", "http://zo%C3%AB@example.com"},
        {"https://xn--bcher-kva.de", "https://xn--bcher-kva.de"},
        {"http://[::1]:80/", "http://[::1]:80/"},
        {"mailto:zo%C3%AB@b%C3%BCcher.de", "mailto:zo%C3%AB@b%C3%BCcher.de"},
        {"", ""},
    };
    for (const auto& [written, resolvable] : urls) {
        std::string url(written);
        EXPECT_TRUE(makeHostResolvable(url)) << written;
        EXPECT_EQ(url, resolvable);
    }
}

TEST(InternationalHost, IsRefusedWhereThereIsNoSuchName)
{
    for (const std::string_view written : {"http://%FF.de/", "http://%C3.de", "http://a%2Fb.de/", "http://%.de",
                                           "http://%E2%84%80.de/", "http://a%20b.de"}) {
        std::string url(written);
        EXPECT_FALSE(makeHostResolvable(url)) << written;
        EXPECT_EQ(url, written);
    }
}

} // namespace
} // namespace vorn::links
