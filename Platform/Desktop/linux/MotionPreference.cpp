#include "Platform/Desktop/MotionPreference.h"

#include "Platform/Base/Owned.h"

#include <utility>

#include <gio/gio.h>

namespace vorn {
namespace {

constexpr const char* schemaName = "org.gnome.desktop.interface"; // used by other desktops too
constexpr const char* animates = "enable-animations";

using Settings = Owned<GSettings, g_object_unref>;
using Schema = Owned<GSettingsSchema, g_settings_schema_unref>;

/// Null where the desktop has no such settings: GLib ends the process when asked for missing ones.
Settings interfaceSettings()
{
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    if (source == nullptr) return nullptr;
    const Schema schema(g_settings_schema_source_lookup(source, schemaName, TRUE));
    if (!schema || g_settings_schema_has_key(schema.get(), animates) == FALSE) return nullptr;
    return Settings(g_settings_new_full(schema.get(), nullptr, nullptr));
}

bool reducesMotion(GSettings* settings)
{
    return settings != nullptr && g_settings_get_boolean(settings, animates) == FALSE;
}

} // namespace

struct MotionWatch::System {
    Settings settings;
    std::function<void(bool)> onChange;
    gulong connection = 0;

    static void changed(GSettings* settings, const char* /*key*/, gpointer system)
    {
        static_cast<System*>(system)->onChange(reducesMotion(settings));
    }
};

bool systemReducesMotion()
{
    return reducesMotion(interfaceSettings().get());
}

MotionWatch::MotionWatch(std::function<void(bool)> onChange)
{
    auto settings = interfaceSettings();
    if (!settings) return;
    system_ = std::make_unique<System>(System{.settings = std::move(settings), .onChange = std::move(onChange)});
    GSettings* const source = system_->settings.get();
    system_->connection =
        g_signal_connect(source, "changed::enable-animations", G_CALLBACK(&System::changed), system_.get());
    reducesMotion(source); // GLib reports changes only of keys that have been read
}

MotionWatch::~MotionWatch()
{
    if (system_) g_signal_handler_disconnect(system_->settings.get(), system_->connection);
}

} // namespace vorn
