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

} // namespace vorn
