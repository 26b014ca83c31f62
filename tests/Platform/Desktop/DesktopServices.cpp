#include "tests/Platform/Desktop/DesktopServices.h"

#include "Platform/Base/FileDescriptor.h"

#include <array>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include <gio/gio.h>
#include <gio/gunixfdlist.h>
#include <poll.h>
#include <unistd.h>

namespace vorn::testing {
namespace {

constexpr const char* interfaces = R"(<node>
  <interface name="org.freedesktop.Notifications">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
    <method name="CloseNotification"><arg type="u" direction="in"/></method>
  </interface>
  <interface name="org.freedesktop.login1.Manager">
    <method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="h" direction="out"/></method>
  </interface>
  <interface name="org.gnome.SessionManager">
    <method name="Inhibit"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="u" direction="in"/><arg type="u" direction="out"/></method>
    <method name="Uninhibit"><arg type="u" direction="in"/></method>
  </interface>
</node>)";

constexpr const char* notificationsPath = "/org/freedesktop/Notifications";
constexpr const char* launcher = "com.canonical.Unity.LauncherEntry";

std::string printed(const std::string& method, GVariant* arguments)
{
    char* const text = g_variant_print(arguments, FALSE);
    std::string whole = method + text;
    g_free(text);
    return whole;
}

} // namespace

class DesktopServices::Services {
public:
    Services(const std::string& address, Options options) : options_(std::move(options))
    {
        std::promise<void> ready;
        auto isReady = ready.get_future();
        thread_ = std::thread([this, address, &ready] { run(address, ready); });
        isReady.get();
    }

    ~Services()
    {
        onThread([this] { g_main_loop_quit(loop_); });
        thread_.join();
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }

    Services(Services&&) = delete;

    std::vector<std::string> calls() const
    {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

    bool isAwake() const
    {
        const std::lock_guard lock(mutex_);
        pollfd end{.fd = lock_.get(), .events = 0, .revents = 0};
        return lock_ && poll(&end, 1, 0) == 0; // the last writer has not closed it
    }

    void click(std::uint32_t id, const std::string& action, const std::string& token)
    {
        onThread([this, id, action, token] {
            if (!token.empty()) emit("ActivationToken", g_variant_new("(us)", id, token.c_str()));
            emit("ActionInvoked", g_variant_new("(us)", id, action.c_str()));
        });
    }

private:
    void onThread(std::function<void()> work)
    {
        {
            const std::lock_guard lock(mutex_); // the thread sanitizer does not see GLib's own synchronisation
            work_.push_back(std::move(work));
        }
        const GSourceFunc doNext = [](gpointer self) -> gboolean {
            static_cast<Services*>(self)->nextWork()();
            return G_SOURCE_REMOVE;
        };
        g_main_context_invoke(context_, doNext, this);
    }

    std::function<void()> nextWork()
    {
        const std::lock_guard lock(mutex_);
        auto work = std::move(work_.front());
        work_.pop_front();
        return work;
    }

    void emit(const char* signal, GVariant* arguments)
    {
        g_dbus_connection_emit_signal(bus_, nullptr, notificationsPath, notifications, signal, arguments, nullptr);
    }

    void run(const std::string& address, std::promise<void>& ready)
    {
        g_main_context_push_thread_default(context_);
        // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        bus_ = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
        constexpr GDBusInterfaceVTable methods = {method, nullptr, nullptr, {}};
        const char* const paths[] = {notificationsPath, "/org/freedesktop/login1", "/org/gnome/SessionManager"};
        for (std::size_t each = 0; each < 3; ++each)
            g_dbus_connection_register_object(bus_, paths[each], node->interfaces[each], &methods, this, nullptr,
                                              nullptr);
        g_dbus_connection_signal_subscribe(bus_, nullptr, launcher, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                           signal, this, nullptr);
        for (const std::string& name : options_.names) own(name);
        ready.set_value();
        g_main_loop_run(loop_);
        g_dbus_connection_close_sync(bus_, nullptr, nullptr);
        g_dbus_node_info_unref(node);
        g_object_unref(bus_);
        while (g_main_context_pending(context_) != FALSE) g_main_context_iteration(context_, FALSE);
        g_main_context_pop_thread_default(context_);
    }

    void own(const std::string& name) const
    {
        GVariant* const answer = g_dbus_connection_call_sync(
            bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name.c_str(), 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        if (answer != nullptr) g_variant_unref(answer);
    }

    void note(const std::string& call)
    {
        const std::lock_guard lock(mutex_);
        calls_.push_back(call);
    }

    static void signal(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                       const char* /*interface*/, const char* name, GVariant* arguments, gpointer self)
    {
        static_cast<Services*>(self)->note(printed(name, arguments));
    }

    static void method(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/, const char* interface,
                       const char* name, GVariant* arguments, GDBusMethodInvocation* call, gpointer self)
    {
        auto* const services = static_cast<Services*>(self);
        services->note(printed(name, arguments));
        if (services->options_.kind == Kind::silent) return g_object_unref(call);
        if (services->options_.kind == Kind::refusing)
            return g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED, "not you");
        services->answer(interface, name, call);
    }

    void answer(std::string_view interface, std::string_view name, GDBusMethodInvocation* call)
    {
        if (name == "GetCapabilities") return giveCapabilities(call);
        if (name == "Notify") return g_dbus_method_invocation_return_value(call, g_variant_new("(u)", ++last_));
        if (name != "Inhibit") return g_dbus_method_invocation_return_value(call, nullptr);
        if (interface == sessionManager)
            return g_dbus_method_invocation_return_value(call, g_variant_new("(u)", 4711U));
        giveLock(call);
    }

    void giveCapabilities(GDBusMethodInvocation* call) const
    {
        std::vector<const char*> words;
        for (const std::string& each : options_.capabilities) words.push_back(each.c_str());
        GVariant* const list = g_variant_new_strv(words.data(), static_cast<gssize>(words.size()));
        g_dbus_method_invocation_return_value(call, g_variant_new("(@as)", list));
    }

    void giveLock(GDBusMethodInvocation* call)
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) return g_object_unref(call);
        GUnixFDList* const files = g_unix_fd_list_new();
        g_unix_fd_list_append(files, ends[1], nullptr);
        close(ends[1]);
        {
            const std::lock_guard lock(mutex_);
            lock_ = FileDescriptor(ends[0]);
        }
        g_dbus_method_invocation_return_value_with_unix_fd_list(call, g_variant_new("(h)", 0), files);
        g_object_unref(files);
    }

    const Options options_;
    GMainContext* context_ = g_main_context_new();
    GMainLoop* loop_ = g_main_loop_new(context_, FALSE);
    GDBusConnection* bus_ = nullptr;
    std::uint32_t last_ = 0;   ///< notification
    mutable std::mutex mutex_; ///< guards what follows
    std::vector<std::string> calls_;
    FileDescriptor lock_{-1};
    std::deque<std::function<void()>> work_;
    std::thread thread_;
};

DesktopServices::DesktopServices(const std::string& address) : DesktopServices(address, Options{})
{
}

DesktopServices::DesktopServices(const std::string& address, Options options)
    : services_(std::make_unique<Services>(address, std::move(options)))
{
}

DesktopServices::~DesktopServices() = default;

std::vector<std::string> DesktopServices::calls() const
{
    return services_->calls();
}

bool DesktopServices::isAwake() const
{
    return services_->isAwake();
}

void DesktopServices::click(std::uint32_t id, const std::string& action, const std::string& token)
{
    services_->click(id, action, token);
}

} // namespace vorn::testing
