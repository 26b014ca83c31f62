#include "Platform/Keychain/linux/SecretServiceRequest.h"

#include <utility>

namespace vorn {
namespace {

using glib::Failure;
using glib::Object;

using Attributes = Owned<GHashTable, g_hash_table_unref>;
using Value = Owned<SecretValue, secret_value_unref>;

/// How an item is described to the service, under the name of the application.
class Schema {
public:
    explicit Schema(const KeychainItem& item) : name_(item.service + ".Item") {}
    Schema(Schema&&) = delete;

    const SecretSchema* get() const noexcept { return &schema_; }

private:
    std::string name_;
    SecretSchema schema_ = {
        name_.c_str(),
        SECRET_SCHEMA_NONE,
        {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"account", SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, {}}},
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr};
};

/// libsecret's proxy of the service, subclassed to use our own connection: the original insists on the one that GLib
/// shares, whose loss ends the process and which must not be closed.
GType serviceOnOwnBus()
{
    static const GType type = g_type_register_static_simple(
        SECRET_TYPE_SERVICE, "SecretServiceOnOwnBus", sizeof(SecretServiceClass),
        [](gpointer given, gpointer /*data*/) {
            G_OBJECT_CLASS(given)->constructor = [](GType ofType, guint count, GObjectConstructParam* properties) {
                GObject* object =
                    G_OBJECT_CLASS(g_type_class_peek(SECRET_TYPE_SERVICE))->constructor(ofType, count, properties);
                g_object_set(object, "g-bus-type", G_BUS_TYPE_NONE, nullptr);
                return object;
            };
        },
        sizeof(SecretService), nullptr, {});
    return type;
}

Attributes attributesOf(const KeychainItem& item)
{
    Attributes attributes(g_hash_table_new_full(g_str_hash, g_str_equal, nullptr, g_free));
    g_hash_table_insert(attributes.get(), const_cast<char*>("service"), g_strdup(item.service.c_str()));
    g_hash_table_insert(attributes.get(), const_cast<char*>("account"), g_strdup(item.account.c_str()));
    return attributes;
}

std::int32_t statusOf(const Failure& failure, const SecretServiceRequest::Outcome& outcome)
{
    if (failure.is(SECRET_ERROR, SECRET_ERROR_IS_LOCKED)) return KeychainError::interactionNotAllowed;
    if (failure.is(SECRET_ERROR, SECRET_ERROR_NO_SUCH_OBJECT)) return KeychainError::itemNotFound;
    if (failure.is(SECRET_ERROR, SECRET_ERROR_ALREADY_EXISTS)) return KeychainError::duplicateItem;
    for (const int code : {G_DBUS_ERROR_ACCESS_DENIED, G_DBUS_ERROR_AUTH_FAILED})
        if (failure.is(G_DBUS_ERROR, code)) return KeychainError::authFailed;
    if (failure.is(G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED)) return KeychainError::authFailed;
    return outcome.lateStatus(); // cancelled, closed, or no service
}

} // namespace

std::int32_t SecretServiceRequest::Outcome::lateStatus() const
{
    return asksUser ? KeychainError::interactionNotAllowed : KeychainError::notAvailable;
}

template <class Finish, class... Arguments>
auto SecretServiceRequest::finish(Finish function, Arguments... arguments)
{
    Failure failure;
    auto result = function(arguments..., failure.slot());
    if (failure) throw KeychainError(statusOf(failure, outcome_));
    return result;
}

SecretServiceRequest::SecretServiceRequest(Outcome& outcome, std::chrono::milliseconds limit,
                                           std::chrono::milliseconds patience)
    : outcome_(outcome), limit_(limit), patience_(patience)
{
    giveUpAfter(limit_ * 9 / 10);
}

SecretServiceRequest::~SecretServiceRequest()
{
    service_.reset();
    if (bus_) events_.wait([this](auto done, auto data) { g_dbus_connection_close(bus_.get(), nullptr, done, data); });
}

void SecretServiceRequest::connect(const std::string& address)
{
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const auto connected = events_.wait([&](auto done, auto data) {
        g_dbus_connection_new_for_address(address.c_str(), flags, nullptr, cancellable_.get(), done, data);
    });
    bus_.reset(finish(g_dbus_connection_new_for_address_finish, connected.get()));
    const auto opened = events_.wait([&](auto done, auto data) {
        g_async_initable_new_async(serviceOnOwnBus(), G_PRIORITY_DEFAULT, cancellable_.get(), done, data,
                                   "g-connection", bus_.get(), "flags", SECRET_SERVICE_OPEN_SESSION, nullptr);
    });
    service_.reset(finish(secret_service_open_finish, opened.get()));
}

std::optional<std::string> SecretServiceRequest::read(const KeychainItem& item)
{
    const auto found = search(item, SECRET_SEARCH_NONE);
    if (found.empty()) return std::nullopt;
    SecretItem* kept = found.front().get();
    unlock(kept);
    const auto loaded =
        events_.wait([&](auto done, auto data) { secret_item_load_secret(kept, cancellable_.get(), done, data); });
    finish(secret_item_load_secret_finish, kept, loaded.get());
    const Value value(secret_item_get_secret(kept));
    if (!value) throw KeychainError(KeychainError::decode);
    gsize size = 0;
    const char* bytes = secret_value_get(value.get(), &size);
    return size == 0 ? std::string() : std::string(bytes, size);
}

void SecretServiceRequest::add(const KeychainItem& item, std::string_view bytes, const std::string& label)
{
    // The service would replace an existing secret.
    if (!search(item, SECRET_SEARCH_NONE).empty()) throw KeychainError(KeychainError::duplicateItem);
    const Schema schema(item);
    const Attributes attributes = attributesOf(item);
    const Value value(secret_value_new(bytes.data(), static_cast<gssize>(bytes.size()), "application/octet-stream"));
    outcome_.asksUser = true; // for the password of a locked or a new collection
    const auto stored = events_.wait([&](auto done, auto data) {
        secret_service_store(service_.get(), schema.get(), attributes.get(), SECRET_COLLECTION_DEFAULT, label.c_str(),
                             value.get(), cancellable_.get(), done, data);
    });
    if (finish(secret_service_store_finish, service_.get(), stored.get()) == FALSE)
        throw KeychainError(KeychainError::userCanceled);
    outcome_.asksUser = false;
}

void SecretServiceRequest::remove(const KeychainItem& item)
{
    for (const auto& found : search(item, SECRET_SEARCH_ALL)) {
        unlock(found.get());
        const auto deleted = events_.wait(
            [&](auto done, auto data) { secret_item_delete(found.get(), cancellable_.get(), done, data); });
        finish(secret_item_delete_finish, found.get(), deleted.get());
    }
}

void SecretServiceRequest::giveUpAfter(std::chrono::milliseconds time)
{
    giveUp_ = events_.after(
        time,
        [](gpointer self) {
            static_cast<SecretServiceRequest*>(self)->giveUp();
            return G_SOURCE_REMOVE;
        },
        this);
}

void SecretServiceRequest::giveUp()
{
    const auto more = outcome_.asksUser ? std::exchange(patience_, {}) : std::chrono::milliseconds();
    if (more.count() > 0) return giveUpAfter(more);
    g_cancellable_cancel(cancellable_.get());
    // Cancelling first asks an open dialog to close, and the program that shows it may be what hangs.
    hangUp_ = events_.after(
        limit_ / 20,
        [](gpointer self) {
            if (auto* bus = static_cast<SecretServiceRequest*>(self)->bus_.get())
                g_dbus_connection_close(bus, nullptr, nullptr, nullptr);
            return G_SOURCE_REMOVE;
        },
        this);
}

std::vector<Object<SecretItem>> SecretServiceRequest::search(const KeychainItem& item, SecretSearchFlags flags)
{
    const Schema schema(item);
    const Attributes attributes = attributesOf(item);
    const auto searched = events_.wait([&](auto done, auto data) {
        secret_service_search(service_.get(), schema.get(), attributes.get(), flags, cancellable_.get(), done, data);
    });
    GList* list = finish(secret_service_search_finish, service_.get(), searched.get());
    std::vector<Object<SecretItem>> items;
    for (GList* each = list; each != nullptr; each = each->next) items.emplace_back(SECRET_ITEM(each->data));
    g_list_free(list);
    return items;
}

void SecretServiceRequest::unlock(SecretItem* item)
{
    if (secret_item_get_locked(item) == FALSE) return;
    outcome_.asksUser = true;
    GList one{item, nullptr, nullptr};
    const auto unlocked = events_.wait(
        [&](auto done, auto data) { secret_service_unlock(service_.get(), &one, cancellable_.get(), done, data); });
    if (finish(secret_service_unlock_finish, service_.get(), unlocked.get(), nullptr) == 0)
        throw KeychainError(KeychainError::userCanceled);
    outcome_.asksUser = false;
}

} // namespace vorn
