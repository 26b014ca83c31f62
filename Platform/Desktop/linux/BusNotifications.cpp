#include "Platform/Desktop/linux/BusNotifications.h"

#include "Platform/Base/Owned.h"

#include <string_view>
#include <utility>

namespace vorn {
namespace {

constexpr BusObject service = {"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                               "org.freedesktop.Notifications"};
constexpr const char* clicked = "default"; // the action of a click on the notification itself
constexpr const char* sound = "complete";  // of freedesktop.org's "Sound Naming Specification"

using Text = Owned<char, g_free>;

bool has(GVariant* capabilities, std::string_view wanted)
{
    GVariantIter each;
    g_variant_iter_init(&each, capabilities);
    const char* name = nullptr;
    while (g_variant_iter_next(&each, "&s", &name) != FALSE)
        if (name == wanted) return true;
    return false;
}

/// `body` escaped for a service with "body-markup", which would read it as markup.
std::string escaped(const std::string& body)
{
    return Text(g_markup_escape_text(body.data(), static_cast<gssize>(body.size()))).get();
}

GVariant* hints(const Notification& notification, const std::string& desktopFile)
{
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(desktopFile.c_str()));
    if (notification.hasSound)
        g_variant_builder_add(&hints, "{sv}", "sound-name", g_variant_new_string(sound));
    else
        g_variant_builder_add(&hints, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
    return g_variant_builder_end(&hints);
}

GVariant* actions(const Notification& notification, bool hasActions)
{
    const char* const both[] = {clicked, notification.action.c_str()};
    return g_variant_new_strv(both, hasActions ? 2 : 0);
}

} // namespace

BusNotifications::BusNotifications(MessageBus& session, ApplicationNames names,
                                   std::function<void(const std::string&)> onClick)
    : session_(session), names_(std::move(names)), onClick_(std::move(onClick))
{
    session_.listen(service, [this](const std::string& signal, GVariant* arguments) { onSignal(signal, arguments); });
}

void BusNotifications::show(const Notification& notification)
{
    session_.call(service, "GetCapabilities", g_variant_new("()"),
                  [this, notification, number = ++generation_](GVariant* answer, GUnixFDList* /*files*/) {
                      if (answer == nullptr || number != generation_) return;
                      if (g_variant_is_of_type(answer, G_VARIANT_TYPE("(as)")) == FALSE) return;
                      const Owned<GVariant, g_variant_unref> capabilities(g_variant_get_child_value(answer, 0));
                      send(notification, capabilities.get());
                  });
}

void BusNotifications::send(const Notification& notification, GVariant* capabilities)
{
    const std::string body = has(capabilities, "body-markup") ? escaped(notification.body) : notification.body;
    GVariant* const arguments = g_variant_new(
        "(susss@as@a{sv}i)", names_.name.c_str(), shown_, names_.identifier.c_str(), notification.title.c_str(),
        body.c_str(), actions(notification, has(capabilities, "actions")), hints(notification, names_.identifier), -1);
    session_.call(service, "Notify", arguments, [this, number = generation_](GVariant* answer, GUnixFDList* /*files*/) {
        if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)")) == FALSE) return;
        std::uint32_t id = 0;
        g_variant_get(answer, "(u)", &id);
        if (number == generation_)
            shown_ = id;
        else
            close(id);
    });
}

void BusNotifications::withdraw()
{
    ++generation_;
    if (shown_ != 0) close(std::exchange(shown_, 0));
}

void BusNotifications::close(std::uint32_t id)
{
    session_.call(service, "CloseNotification", g_variant_new("(u)", id), [](GVariant*, GUnixFDList*) {});
}

void BusNotifications::onSignal(const std::string& signal, GVariant* arguments)
{
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(us)")) == FALSE) return;
    std::uint32_t id = 0;
    const char* word = nullptr;
    g_variant_get(arguments, "(u&s)", &id, &word);
    if (id == 0 || id != shown_) return; // the service's signals go to every application
    if (signal == "ActivationToken") token_ = word;
    if (signal == "ActionInvoked" && std::string_view(word) == clicked) onClick_(std::exchange(token_, {}));
}

} // namespace vorn
