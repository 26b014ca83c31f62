#include "VornMac/Application/AppearanceSettings.h"

#include "VornMac/Composition/OverrideKeys.h"
#include "VornMac/System/Appearance.h"
#include "tests/VornMac/Application/KeptDefaults.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(AppearanceSettings, TheDefaultsChooseTheTheme)
{
    struct Case {
        const char* value;
        bool isDark;
    };
    testing::KeptDefaults defaults;
    const AppearanceSettings before(defaults);
    const bool systemIsDark = Appearance::shared().isDark();
    for (const auto& [value, isDark] : {Case{"dark", true}, Case{"light", false}, Case{"dark", true},
                                        Case{"blue", systemIsDark}, Case{"", systemIsDark}}) {
        SCOPED_TRACE(value);
        defaults.texts[overrides::appearance] = value;
        const AppearanceSettings settings(defaults);
        EXPECT_EQ(Appearance::shared().isDark(), isDark);
    }
}

TEST(AppearanceSettings, TheDefaultsSayWhatMoves)
{
    testing::KeptDefaults defaults;
    for (const char* value : {"YES", "NO", "YES"}) {
        SCOPED_TRACE(value);
        defaults.texts[overrides::reduceMotion] = value;
        const AppearanceSettings settings(defaults);
        EXPECT_EQ(Appearance::shared().reducesMotion(), *value == 'Y');
    }
    defaults.texts.clear();
    const AppearanceSettings settings(defaults);
    EXPECT_EQ(Appearance::shared().reducesMotion(), systemReducesMotion());
}

} // namespace
} // namespace vorn
