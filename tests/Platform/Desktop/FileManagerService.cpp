#include "tests/Platform/Desktop/FileManagerService.h"

#include <gio/gio.h>

namespace vorn::testing {
namespace {

constexpr const char* interface = R"(<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface></node>)";

void showItems(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/, const char* /*interface*/,
               const char* /*method*/, GVariant* arguments, GDBusMethodInvocation* call, gpointer shown)
{
    GVariant* items = g_variant_get_child_value(arguments, 0);
    GVariant* item = g_variant_get_child_value(items, 0);
    static_cast<std::promise<std::string>*>(shown)->set_value(g_variant_get_string(item, nullptr));
    g_variant_unref(item);
    g_variant_unref(items);
    g_dbus_method_invocation_return_value(call, nullptr);
}

} // namespace

FileManagerService::FileManagerService(const std::string& address)
    : context_(g_main_context_new()), loop_(g_main_loop_new(context_, FALSE))
{
    std::promise<void> ready;
    auto isReady = ready.get_future();
    thread_ = std::thread([this, address, &ready] { run(address, ready); });
    isReady.get();
}

FileManagerService::~FileManagerService()
{
    const GSourceFunc quit = [](gpointer loop) {
        g_main_loop_quit(static_cast<GMainLoop*>(loop));
        return G_SOURCE_REMOVE;
    };
    g_main_context_invoke(context_, quit, loop_);
    thread_.join();
    g_main_loop_unref(loop_);
    g_main_context_unref(context_);
}

void FileManagerService::run(const std::string& address, std::promise<void>& ready)
{
    g_main_context_push_thread_default(context_);
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GDBusConnection* bus = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(interface, nullptr);
    constexpr GDBusInterfaceVTable calls = {showItems, nullptr, nullptr, {}};
    g_dbus_connection_register_object(bus, "/org/freedesktop/FileManager1", node->interfaces[0], &calls, &shown_,
                                      nullptr, nullptr);
    const GBusNameAcquiredCallback acquired = [](GDBusConnection*, const char*, gpointer promise) {
        static_cast<std::promise<void>*>(promise)->set_value();
    };
    const guint name = g_bus_own_name_on_connection(bus, "org.freedesktop.FileManager1", G_BUS_NAME_OWNER_FLAGS_NONE,
                                                    acquired, nullptr, &ready, nullptr);
    g_main_loop_run(loop_);
    g_bus_unown_name(name);
    g_dbus_connection_close_sync(bus, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    g_object_unref(bus);
    while (g_main_context_pending(context_) != FALSE) g_main_context_iteration(context_, FALSE);
    g_main_context_pop_thread_default(context_);
}

} // namespace vorn::testing
