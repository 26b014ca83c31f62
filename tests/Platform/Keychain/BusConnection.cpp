#include "tests/Platform/Keychain/BusConnection.h"

#include <stdexcept>

#include <gio/gio.h>

namespace vorn::testing {
namespace {

[[noreturn]] void fail(GError* error)
{
    const std::string reason = error->message;
    g_error_free(error);
    throw std::runtime_error(reason);
}

} // namespace

BusConnection::BusConnection(const std::string& address) : context_(g_main_context_new())
{
    g_main_context_push_thread_default(context_);
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* error = nullptr;
    connection_ = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, &error);
    if (connection_ == nullptr) fail(error);
}

BusConnection::~BusConnection()
{
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    g_object_unref(connection_);
    g_main_context_pop_thread_default(context_);
    g_main_context_unref(context_);
}

void BusConnection::waitForName(const std::string& name)
{
    bool there = false;
    const GBusNameAppearedCallback appeared = [](GDBusConnection*, const char*, const char*, gpointer data) {
        *static_cast<bool*>(data) = true;
    };
    const guint watch = g_bus_watch_name_on_connection(connection_, name.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE,
                                                       appeared, nullptr, &there, nullptr);
    while (!there) g_main_context_iteration(context_, TRUE);
    g_bus_unwatch_name(watch);
}

void BusConnection::lockSecrets(const std::string& path)
{
    const char* const paths[] = {path.c_str()};
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_sync(
        connection_, "org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
        g_variant_new("(@ao)", g_variant_new_objv(paths, 1)), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    if (answer == nullptr) fail(error);
    g_variant_unref(answer);
}

} // namespace vorn::testing
