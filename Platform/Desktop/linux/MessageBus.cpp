#include "Platform/Desktop/linux/MessageBus.h"

#include "Platform/Base/Owned.h"
#include "Platform/Base/linux/SessionBus.h"

#include <utility>
#include <vector>

namespace vorn {
namespace {

using Connection = Owned<GDBusConnection, g_object_unref>;
using Cancellable = Owned<GCancellable, g_object_unref>;
using Text = Owned<char, g_free>;
using Variant = Owned<GVariant, g_variant_unref>;

std::string addressOf(MessageBus::Kind kind)
{
    if (kind == MessageBus::Kind::session) return sessionBusAddress();
    const Text address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    return address ? address.get() : "";
}

} // namespace

/// The connection and its listeners. Pending answers refer to it weakly.
struct MessageBus::Link : std::enable_shared_from_this<Link> {
    using Use = std::function<void(GDBusConnection*)>; ///< null where there is no bus

    struct Listener {
        BusObject object;
        Signal heard;
    };

    Link(Kind busKind, std::chrono::milliseconds callLimit) : kind(busKind), limit(static_cast<int>(callLimit.count()))
    {
    }

    ~Link()
    {
        if (connecting) stopConnecting();
        if (connection) g_dbus_connection_close(connection.get(), nullptr, nullptr, nullptr);
    }

    Link(Link&&) = delete;

    void use(Use use)
    {
        if (connection && g_dbus_connection_is_closed(connection.get()) == FALSE) return use(connection.get());
        waiting.push_back(std::move(use));
        if (!connecting) connect();
    }

    void connect()
    {
        const std::string address = addressOf(kind);
        if (address.empty()) return connected(nullptr);
        connecting.reset(g_cancellable_new());
        const GSourceFunc giveUp = [](gpointer cancellable) -> gboolean {
            g_cancellable_cancel(static_cast<GCancellable*>(cancellable));
            return G_SOURCE_CONTINUE; // until `stopConnecting` removes it
        };
        timer = g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(limit), giveUp,
                                   g_object_ref(connecting.get()), g_object_unref);
        // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        const GAsyncReadyCallback done = [](GObject* /*source*/, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<std::weak_ptr<Link>> link(static_cast<std::weak_ptr<Link>*>(data));
            Connection made(g_dbus_connection_new_for_address_finish(result, nullptr));
            if (const auto alive = link->lock()) {
                alive->stopConnecting();
                alive->connected(std::move(made));
            }
        };
        g_dbus_connection_new_for_address(address.c_str(), flags, nullptr, connecting.get(), done,
                                          new std::weak_ptr<Link>(weak_from_this()));
    }

    void stopConnecting()
    {
        g_source_remove(std::exchange(timer, 0));
        g_cancellable_cancel(connecting.get());
        connecting.reset();
    }

    void connected(Connection made)
    {
        connection = std::move(made);
        if (connection)
            for (const Listener& each : listeners) subscribe(each);
        for (const Use& use : std::exchange(waiting, {})) use(connection.get());
    }

    void subscribe(const Listener& listener) const
    {
        struct Heard {
            std::weak_ptr<const Link> link;
            Signal heard;
        };
        const GDBusSignalCallback onSignal = [](GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                                                const char* /*interface*/, const char* name, GVariant* arguments,
                                                gpointer data) {
            const auto* const heard = static_cast<Heard*>(data);
            if (const auto alive = heard->link.lock()) heard->heard(name, arguments);
        };
        const GDestroyNotify free = [](gpointer data) { delete static_cast<Heard*>(data); };
        const BusObject& object = listener.object;
        g_dbus_connection_signal_subscribe(connection.get(), object.service, object.interface, nullptr, object.path,
                                           nullptr, G_DBUS_SIGNAL_FLAGS_NONE, onSignal,
                                           new Heard{weak_from_this(), listener.heard}, free);
    }

    const Kind kind;
    const int limit; ///< milliseconds
    Connection connection;
    Cancellable connecting; ///< null except while connecting
    guint timer = 0;        ///< cancels `connecting` at the limit
    std::vector<Use> waiting;
    std::vector<Listener> listeners;
};

namespace {

/// A call that awaits its answer.
struct Pending {
    std::weak_ptr<void> link;
    MessageBus::Answer then;

    static void answered(GObject* connection, GAsyncResult* result, gpointer data)
    {
        const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
        GUnixFDList* files = nullptr;
        const Variant answer(
            g_dbus_connection_call_with_unix_fd_list_finish(G_DBUS_CONNECTION(connection), &files, result, nullptr));
        const Owned<GUnixFDList, g_object_unref> owned(files);
        if (const auto alive = pending->link.lock()) pending->then(answer.get(), files);
    }
};

/// Takes ownership of the floating `arguments`, even if they are never sent.
std::shared_ptr<GVariant> sunk(GVariant* arguments)
{
    return {g_variant_ref_sink(arguments), g_variant_unref};
}

} // namespace

MessageBus::MessageBus(Kind kind, std::chrono::milliseconds limit) : link_(std::make_shared<Link>(kind, limit))
{
}

MessageBus::~MessageBus() = default;

void MessageBus::call(const BusObject& object, const char* method, GVariant* arguments, Answer then)
{
    link_->use([object, method, given = sunk(arguments), then = std::move(then), link = std::weak_ptr<void>(link_),
                limit = link_->limit](GDBusConnection* bus) {
        if (bus == nullptr) return then(nullptr, nullptr);
        auto pending = std::make_unique<Pending>(Pending{link, then});
        g_dbus_connection_call_with_unix_fd_list(bus, object.service, object.path, object.interface, method,
                                                 given.get(), nullptr, G_DBUS_CALL_FLAGS_NONE, limit, nullptr, nullptr,
                                                 &Pending::answered, pending.release());
    });
}

void MessageBus::emit(const BusObject& object, const char* signal, GVariant* arguments)
{
    link_->use([object, signal, given = sunk(arguments)](GDBusConnection* bus) {
        if (bus != nullptr)
            g_dbus_connection_emit_signal(bus, nullptr, object.path, object.interface, signal, given.get(), nullptr);
    });
}

void MessageBus::listen(const BusObject& object, Signal heard)
{
    link_->listeners.push_back({object, std::move(heard)});
    if (link_->connection) link_->subscribe(link_->listeners.back());
}

} // namespace vorn
