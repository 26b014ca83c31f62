#include "NimbrelExportKit/Links/PercentEncoding.h"

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

std::string encoded(std::string_view address)
{
    std::string url;
    appendPercentEncoded(address, url);
    return url;
}

TEST(PercentEncoding, LeavesWhatMayStand)
{
    for (const std::string_view address : {"https://user:pw@example.com:8080/a-b._~/!$&'()*+,;=:@?q=/?#f/?",
                                           "http://[2001:db8::1]:80/", "HTTP://Example.COM/%C3%A9%2f", "example.com"}) {
        EXPECT_EQ(encoded(address), address);
    }
}

TEST(PercentEncoding, EncodesWhatMayNot)
{
    EXPECT_EQ(encoded("http://example.com/é"), "http://example.com/%C3%A9");
    EXPECT_EQ(encoded("http://a.de/?q=ü#ß"), "http://a.de/?q=%C3%BC#%C3%9F");
    EXPECT_EQ(encoded("http://example.com/a|b^c{d}\"e\""), "http://example.com/a%7Cb%5Ec%7Bd%7D%22e%22");
    EXPECT_EQ(encoded("http://example.com/a[1]?b[]=2"), "http://example.com/a%5B1%5D?b%5B%5D=2");
    EXPECT_EQ(encoded("http://[::1]/a[1]"), "http://[::1]/a%5B1%5D");
    EXPECT_EQ(encoded("example.com/[1]"), "example.com/%5B1%5D");
    EXPECT_EQ(encoded("/?from=http://[1]"), "/?from=http://%5B1%5D");
    EXPECT_EQ(encoded("http://example.com/#a#b"), "http://example.com/#a%23b");
}

TEST(PercentEncoding, EncodesAPercentSignThatBeginsNoEscape)
{
    EXPECT_EQ(encoded("http://example.com/100%"), "http://example.com/100%25");
    EXPECT_EQ(encoded("http://example.com/%zz%4"), "http://example.com/%25zz%254");
    EXPECT_EQ(encoded("http://example.com/%e9%"), "http://example.com/%e9%25");
}

TEST(PercentEncoding, AppendsToWhatIsThere)
{
    std::string url = "http://";
    appendPercentEncoded("example.com/é", url);
    EXPECT_EQ(url, "http://example.com/%C3%A9");
}

} // namespace
} // namespace vorn::links
