#include "VornMac/Application/AppearanceSettings.h"

#include "VornMac/Composition/OverrideKeys.h"
#include "VornMac/System/Appearance.h"

namespace vorn {
namespace {

std::optional<Appearance::Theme> themeIn(const UserDefaults& defaults)
{
    const auto name = defaults.text(overrides::appearance);
    if (name == "light") return Appearance::Theme::light;
    if (name == "dark") return Appearance::Theme::dark;
    return std::nullopt;
}

/// Absent if the defaults leave it to the system. A boolean `false`, unlike the text "NO", cannot be told from a
/// missing value.
std::optional<bool> motionIn(const UserDefaults& defaults)
{
    const bool reduces = defaults.boolean(overrides::reduceMotion);
    if (!reduces && !defaults.text(overrides::reduceMotion)) return std::nullopt;
    return reduces;
}

} // namespace

AppearanceSettings::AppearanceSettings(const UserDefaults& defaults)
{
    Appearance& appearance = Appearance::shared();
    appearance.setTheme(themeIn(defaults));
    const auto forced = motionIn(defaults);
    appearance.setReducesMotion(forced ? *forced : systemReducesMotion());
    if (!forced) watch_.emplace([&appearance](bool reduces) { appearance.setReducesMotion(reduces); });
}

} // namespace vorn
