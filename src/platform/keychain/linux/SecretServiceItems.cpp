// Why every operation searches first: `secret_password_clear` answers the same for an item that is
// locked and one that is not there, and the key stays. A search with SECRET_SEARCH_UNLOCK asks for
// the keyring to be unlocked, and says of each item whether it still is locked.

#include "platform/keychain/linux/SecretServiceItems.h"

#include <libsecret/secret.h>

#include <memory>

namespace vantrel {

namespace {

const SecretSchema schema = {
    "com.orbisk.apikeys",
    SECRET_SCHEMA_NONE,
    {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
     {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
     {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
    0,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

struct FreeItems
{
    void operator()(GList *items) const { g_list_free_full(items, g_object_unref); }
};
using Items = std::unique_ptr<GList, FreeItems>;

struct FreeValue
{
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};
using Value = std::unique_ptr<SecretValue, FreeValue>;

struct FreeError
{
    void operator()(GError *error) const { g_error_free(error); }
};
using Error = std::unique_ptr<GError, FreeError>;

struct ReleaseBus
{
    void operator()(GDBusConnection *bus) const { g_object_unref(bus); }
};
using Bus = std::unique_ptr<GDBusConnection, ReleaseBus>;

std::int32_t statusOf(const GError &error)
{
    if (error.domain == SECRET_ERROR) {
        switch (error.code) {
        case SECRET_ERROR_IS_LOCKED:
            return secretStatus::interactionNotAllowed;
        case SECRET_ERROR_NO_SUCH_OBJECT:
            return secretStatus::noSuchKeychain;
        default:
            return secretStatus::ioError;
        }
    }
    if (error.domain == G_DBUS_ERROR) {
        const bool isWithoutCollection =
            error.code == G_DBUS_ERROR_UNKNOWN_METHOD || error.code == G_DBUS_ERROR_UNKNOWN_OBJECT;
        return isWithoutCollection ? secretStatus::noSuchKeychain : secretStatus::notAvailable;
    }
    // The other errors on the way to the bus, but for one that the service gave in words of its
    // own.
    const bool isWithoutBus = error.domain == G_SPAWN_ERROR ||
                              (error.domain == G_IO_ERROR && error.code != G_IO_ERROR_DBUS_ERROR);
    return isWithoutBus ? secretStatus::notAvailable : secretStatus::ioError;
}

/// The session's bus, told not to end the process when the bus goes, which is what GLib does
/// otherwise. libsecret uses the same connection while somebody holds it.
Bus sessionBus()
{
    Bus bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    return bus;
}

template<typename Attempt>
std::int32_t tryOnce(const Attempt &attempt, Error &error)
{
    const Bus bus = sessionBus();
    GError *raw = nullptr;
    const std::int32_t status = attempt(&raw);
    error.reset(raw);
    return status;
}

/// A refusal because of a lock comes from a daemon that is well, and a second try would only ask
/// the person again. One that is frozen would cost the same time again.
bool isWorthASecondTry(const GError &error)
{
    return g_error_matches(&error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED) == 0 &&
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) == 0;
}

/// Runs `attempt(GError **)`, and once more on an error: after a restart of the daemon libsecret
/// holds on to the address of the old one until it is told to disconnect.
template<typename Attempt>
std::int32_t withSecondTry(const Attempt &attempt)
{
    Error error;
    std::int32_t status = tryOnce(attempt, error);
    if (error && isWorthASecondTry(*error)) {
        secret_service_disconnect();
        status = tryOnce(attempt, error);
    }
    return error ? statusOf(*error) : status;
}

Items search(const QByteArray &service, const QByteArray &account, GError **error)
{
    const auto flags = SecretSearchFlags(SECRET_SEARCH_ALL | SECRET_SEARCH_UNLOCK);
    return Items(secret_password_search_sync(&schema, flags, nullptr, error, "service",
                                             service.constData(), "account", account.constData(),
                                             nullptr));
}

/// The file backend, used inside sandboxes, gives objects that are no SecretItem; they are not
/// locked.
bool isLocked(gpointer item)
{
    return SECRET_IS_ITEM(item) != 0 && secret_item_get_locked(SECRET_ITEM(item)) != 0;
}

} // namespace

SecretItems::Match SecretServiceItems::copyMatching(const QString &service, const QString &account)
{
    const QByteArray serviceName = service.toUtf8();
    const QByteArray accountName = account.toUtf8();
    Match match;
    match.status = withSecondTry([&](GError **error) {
        const Items items = search(serviceName, accountName, error);
        if (*error != nullptr || !items) {
            return secretStatus::itemNotFound;
        }
        for (const GList *item = items.get(); item != nullptr; item = item->next) {
            if (isLocked(item->data)) {
                continue;
            }
            const Value value(secret_retrievable_retrieve_secret_sync(
                SECRET_RETRIEVABLE(item->data), nullptr, error));
            if (*error != nullptr) {
                return secretStatus::ioError;
            }
            if (value) {
                gsize size = 0;
                const gchar *const bytes = secret_value_get(value.get(), &size);
                match.secret = QByteArray(bytes, qsizetype(size));
                return secretStatus::success;
            }
        }
        return secretStatus::interactionNotAllowed;
    });
    return match;
}

std::int32_t SecretServiceItems::add(const QString &service, const QString &account,
                                     const QByteArray &secret)
{
    const QByteArray serviceName = service.toUtf8();
    const QByteArray accountName = account.toUtf8();
    const Value value(secret_value_new(secret.constData(), secret.size(), "text/plain"));
    return withSecondTry([&](GError **error) {
        const gboolean isStored = secret_password_store_binary_sync(
            &schema, SECRET_COLLECTION_DEFAULT, serviceName.constData(), value.get(), nullptr,
            error, "service", serviceName.constData(), "account", accountName.constData(), nullptr);
        return isStored != 0 ? secretStatus::success : secretStatus::interactionNotAllowed;
    });
}

std::int32_t SecretServiceItems::remove(const QString &service, const QString &account)
{
    const QByteArray serviceName = service.toUtf8();
    const QByteArray accountName = account.toUtf8();
    return withSecondTry([&](GError **error) {
        const Items items = search(serviceName, accountName, error);
        if (*error != nullptr || !items) {
            return secretStatus::itemNotFound;
        }
        for (const GList *item = items.get(); item != nullptr; item = item->next) {
            if (isLocked(item->data)) {
                return secretStatus::interactionNotAllowed;
            }
        }
        const gboolean isRemoved =
            secret_password_clear_sync(&schema, nullptr, error, "service", serviceName.constData(),
                                       "account", accountName.constData(), nullptr);
        return isRemoved != 0 ? secretStatus::success : secretStatus::itemNotFound;
    });
}

std::unique_ptr<SecretItems> systemSecretItems()
{
    return std::make_unique<SecretServiceItems>();
}

} // namespace vantrel
