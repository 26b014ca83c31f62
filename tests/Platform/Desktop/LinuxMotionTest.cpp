#include "Platform/Desktop/MotionPreference.h"

#include "Platform/Base/Owned.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <vector>

#include <gio/gio.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

/// The desktop's settings, of this process alone.
class Desktop {
public:
    Desktop()
    {
        setenv("GSETTINGS_BACKEND", "memory", 1);
        settings_.reset(g_settings_new("org.gnome.desktop.interface"));
    }
    void animate(bool value) { g_settings_set_boolean(settings_.get(), "enable-animations", value ? TRUE : FALSE); }
    /// Delivers changes, as an event loop does.
    static void deliver()
    {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }

private:
    Owned<GSettings, g_object_unref> settings_;
};

bool hasSchema()
{
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    GSettingsSchema* const schema =
        source == nullptr ? nullptr : g_settings_schema_source_lookup(source, "org.gnome.desktop.interface", TRUE);
    if (schema != nullptr) g_settings_schema_unref(schema);
    return schema != nullptr;
}

#define SKIP_WITHOUT_SCHEMA()                                                                                          \
    if (!hasSchema()) GTEST_SKIP() << "gsettings-desktop-schemas is not installed"

TEST(MotionPreference, FollowsTheDesktop)
{
    SKIP_WITHOUT_SCHEMA();
    Desktop desktop;
    desktop.animate(true);
    EXPECT_FALSE(systemReducesMotion());
    desktop.animate(false);
    EXPECT_TRUE(systemReducesMotion());
}

TEST(MotionPreference, TellsOfChanges)
{
    SKIP_WITHOUT_SCHEMA();
    Desktop desktop;
    desktop.animate(true);
    std::vector<bool> told;
    {
        const MotionWatch watch([&told](bool reduces) { told.push_back(reduces); });
        for (const bool animate : {false, true}) {
            desktop.animate(animate);
            Desktop::deliver();
        }
    }
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
    desktop.animate(false);
    Desktop::deliver();
    EXPECT_EQ(told.size(), 2U) << "nobody watches any more";
}

TEST(MotionPreferenceDeathTest, LivesWithoutTheDesktopsSettings)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // in a new process: GLib looks for its schemas only once
    EXPECT_EXIT(
        {
            for (const char* variable : {"XDG_DATA_DIRS", "XDG_DATA_HOME", "GSETTINGS_SCHEMA_DIR"})
                setenv(variable, "/dev/null", 1); // not a temporary folder, which would be left behind
            const MotionWatch watch([](bool) {});
            std::exit(systemReducesMotion() || hasSchema() ? 1 : 0);
        },
        ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace vorn
