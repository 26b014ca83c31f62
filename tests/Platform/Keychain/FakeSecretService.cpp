#include "tests/Platform/Keychain/FakeSecretService.h"

#include <future>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <thread>

#include <gio/gio.h>

namespace vorn::testing {
namespace {

constexpr const char* interfaces = R"(<node>
  <interface name="org.freedesktop.Secret.Service">
    <method name="OpenSession"><arg type="s" direction="in"/><arg type="v" direction="in"/>
      <arg type="v" direction="out"/><arg type="o" direction="out"/></method>
    <method name="SearchItems"><arg type="a{ss}" direction="in"/>
      <arg type="ao" direction="out"/><arg type="ao" direction="out"/></method>
    <method name="Unlock"><arg type="ao" direction="in"/>
      <arg type="ao" direction="out"/><arg type="o" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.Secret.Item">
    <property name="Locked" type="b" access="read"/>
    <property name="Attributes" type="a{ss}" access="read"/>
    <property name="Label" type="s" access="read"/>
    <property name="Created" type="t" access="read"/>
    <property name="Modified" type="t" access="read"/>
  </interface>
  <interface name="org.freedesktop.Secret.Prompt">
    <method name="Prompt"><arg type="s" direction="in"/></method>
    <method name="Dismiss"/>
    <signal name="Completed"><arg type="b"/><arg type="v"/></signal>
  </interface>
</node>)";

constexpr const char* servicePath = "/org/freedesktop/secrets";
constexpr const char* itemPath = "/org/freedesktop/secrets/collection/fake/1";
constexpr const char* promptPath = "/org/freedesktop/secrets/prompt/1";

GVariant* emptyPaths()
{
    return g_variant_new_array(G_VARIANT_TYPE_OBJECT_PATH, nullptr, 0);
}

GVariant* property(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/, const char* /*interface*/,
                   const char* name, GError** /*error*/, gpointer /*self*/)
{
    const std::string_view wanted = name;
    if (wanted == "Locked") return g_variant_new_boolean(TRUE);
    if (wanted == "Attributes") return g_variant_new_array(G_VARIANT_TYPE("{ss}"), nullptr, 0);
    return wanted == "Label" ? g_variant_new_string("fake") : g_variant_new_uint64(0);
}

} // namespace

class FakeSecretService::Service {
public:
    Service(const std::string& address, Fault fault) : fault_(fault)
    {
        std::promise<void> ready;
        auto isReady = ready.get_future();
        thread_ = std::thread([this, address, &ready] { run(address, ready); });
        isReady.get();
    }

    ~Service()
    {
        g_main_context_invoke(
            context_,
            [](gpointer loop) {
                g_main_loop_quit(static_cast<GMainLoop*>(loop));
                return G_SOURCE_REMOVE;
            },
            loop_);
        thread_.join();
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }

    Service(Service&&) = delete;

    std::atomic<int> dialogs = 0;
    std::atomic<int> dismissals = 0;
    std::promise<void> askerLeft;

    std::string searchedSchema() const
    {
        const std::lock_guard lock(mutex_);
        return searchedSchema_;
    }

private:
    void run(const std::string& address, std::promise<void>& ready)
    {
        g_main_context_push_thread_default(context_);
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        GDBusConnection* bus =
            g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
        constexpr GDBusInterfaceVTable calls = {method, property, nullptr, {}};
        const char* const paths[] = {servicePath, itemPath, promptPath};
        for (std::size_t each = 0; each < 3; ++each)
            g_dbus_connection_register_object(bus, paths[each], node->interfaces[each], &calls, this, nullptr, nullptr);
        const GBusNameAcquiredCallback acquired = [](GDBusConnection*, const char*, gpointer promise) {
            static_cast<std::promise<void>*>(promise)->set_value();
        };
        const guint name = g_bus_own_name_on_connection(bus, "org.freedesktop.secrets", G_BUS_NAME_OWNER_FLAGS_NONE,
                                                        acquired, nullptr, &ready, nullptr);
        g_main_loop_run(loop_);
        g_bus_unown_name(name);
        g_dbus_connection_close_sync(bus, nullptr, nullptr);
        if (watch_ != 0) g_bus_unwatch_name(watch_);
        g_dbus_node_info_unref(node);
        g_object_unref(bus);
        while (g_main_context_pending(context_) != FALSE) g_main_context_iteration(context_, FALSE);
        g_main_context_pop_thread_default(context_);
    }

    static void method(GDBusConnection* bus, const char* sender, const char* /*path*/, const char* /*interface*/,
                       const char* name, GVariant* arguments, GDBusMethodInvocation* call, gpointer self)
    {
        static_cast<Service*>(self)->answer(bus, sender, name, arguments, call);
    }

    void answer(GDBusConnection* bus, const char* sender, std::string_view name, GVariant* arguments,
                GDBusMethodInvocation* call)
    {
        if (fault_ == Fault::silent) return never(call);
        if (fault_ == Fault::refusing)
            return g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED, "not you");
        if (name == "OpenSession") return openSession(arguments, call);
        if (name == "SearchItems") {
            noteSchema(arguments);
            return g_dbus_method_invocation_return_value(
                call, g_variant_new("(@ao@ao)", emptyPaths(), g_variant_new_objv(&itemPath, 1)));
        }
        if (name == "Unlock")
            return g_dbus_method_invocation_return_value(call, g_variant_new("(@aoo)", emptyPaths(), promptPath));
        if (name == "Dismiss") {
            ++dismissals;
            return never(call);
        }
        showDialog(bus, sender, call);
    }

    void noteSchema(GVariant* arguments)
    {
        GVariant* const attributes = g_variant_get_child_value(arguments, 0);
        const char* schema = "";
        g_variant_lookup(attributes, "xdg:schema", "&s", &schema);
        {
            const std::lock_guard lock(mutex_);
            searchedSchema_ = schema;
        }
        g_variant_unref(attributes);
    }

    void showDialog(GDBusConnection* bus, const char* sender, GDBusMethodInvocation* call)
    {
        ++dialogs;
        g_dbus_method_invocation_return_value(call, nullptr);
        if (fault_ == Fault::dismissed) {
            g_dbus_connection_emit_signal(bus, nullptr, promptPath, "org.freedesktop.Secret.Prompt", "Completed",
                                          g_variant_new("(bv)", TRUE, emptyPaths()), nullptr);
            return;
        }
        const GBusNameVanishedCallback vanished = [](GDBusConnection*, const char*, gpointer asker) {
            static_cast<std::promise<void>*>(asker)->set_value();
        };
        watch_ = g_bus_watch_name_on_connection(bus, sender, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, vanished,
                                                &askerLeft, nullptr);
    }

    /// Secrets are sent unencrypted: the other algorithm is not supported.
    static void openSession(GVariant* arguments, GDBusMethodInvocation* call)
    {
        const char* algorithm = nullptr;
        g_variant_get_child(arguments, 0, "&s", &algorithm);
        if (std::string_view(algorithm) != "plain")
            return g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_NOT_SUPPORTED, "plain only");
        g_dbus_method_invocation_return_value(
            call, g_variant_new("(vo)", g_variant_new_string(""), "/org/freedesktop/secrets/session/1"));
    }

    static void never(GDBusMethodInvocation* call) { g_object_unref(call); }

    const Fault fault_;
    GMainContext* context_ = g_main_context_new();
    GMainLoop* loop_ = g_main_loop_new(context_, FALSE);
    guint watch_ = 0;
    mutable std::mutex mutex_;
    std::string searchedSchema_; ///< guarded by `mutex_`
    std::thread thread_;
};

FakeSecretService::FakeSecretService(const std::string& address, Fault fault)
    : service_(std::make_unique<Service>(address, fault))
{
}

FakeSecretService::~FakeSecretService() = default;

int FakeSecretService::dialogs() const
{
    return service_->dialogs;
}

int FakeSecretService::dismissals() const
{
    return service_->dismissals;
}

std::string FakeSecretService::searchedSchema() const
{
    return service_->searchedSchema();
}

void FakeSecretService::waitUntilAskerLeft()
{
    service_->askerLeft.get_future().wait();
}

} // namespace vorn::testing
