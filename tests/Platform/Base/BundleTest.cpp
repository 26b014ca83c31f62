#include "Platform/Base/Bundle.h"

#include <gtest/gtest.h>

namespace vorn {

TEST(Bundle, GivesWhatItsPropertyListSays)
{
    const Bundle bundle(Bundle::Values{{"CFBundleShortVersionString", "2.5"}});
    EXPECT_EQ(bundle.text("CFBundleShortVersionString"), "2.5");
    EXPECT_EQ(bundle.text("CFBundleIdentifier"), std::nullopt);
}

TEST(Bundle, OfAProgramWithoutPropertyListGivesEmbeddedValues)
{
    EXPECT_EQ(Bundle::main({{"VornKeyOfATest", "embedded"}}).text("VornKeyOfATest"), "embedded");
}

TEST(Bundle, IsOfVersionOneWhereItSaysNone)
{
    EXPECT_EQ(Bundle(Bundle::Values{{"CFBundleShortVersionString", "2.3.1"}}).version(), "2.3.1");
    EXPECT_EQ(Bundle(Bundle::Values{{"CFBundleVersion", "77"}}).version(), "1.0.0");
}

} // namespace vorn
