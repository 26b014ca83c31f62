#include "Platform/Desktop/linux/LauncherProgress.h"

namespace vorn {
namespace {

constexpr BusObject entry = {nullptr, "/com/canonical/unity/launcherentry/1", "com.canonical.Unity.LauncherEntry"};

} // namespace

LauncherProgress::LauncherProgress(MessageBus& session, const std::string& identifier)
    : session_(session), application_("application://" + identifier + ".desktop")
{
}

void LauncherProgress::show(std::optional<int> percent)
{
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "progress", g_variant_new_double(percent.value_or(0) / 100.0));
    g_variant_builder_add(&properties, "{sv}", "progress-visible",
                          g_variant_new_boolean(percent.has_value() ? TRUE : FALSE));
    session_.emit(entry, "Update", g_variant_new("(sa{sv})", application_.c_str(), &properties));
}

} // namespace vorn
