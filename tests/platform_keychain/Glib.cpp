#include "platform_keychain/Glib.h"

#include <QtGlobal>

namespace vantrel::test {

Connection connectToSessionBus()
{
    GError *error = nullptr;
    gchar *const address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    if (error != nullptr) {
        qFatal("no session bus: %s", error->message);
    }
    const auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    Connection connection(
        g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, &error));
    g_free(address);
    if (error != nullptr) {
        qFatal("the session bus refuses a connection: %s", error->message);
    }
    return connection;
}

Variant call(GDBusConnection *connection, const char *destination, const char *path,
             const char *interface, const char *method, GVariant *parameters)
{
    GError *error = nullptr;
    Variant reply(g_dbus_connection_call_sync(connection, destination, path, interface, method,
                                              parameters, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                              -1, nullptr, &error));
    if (error != nullptr) {
        qFatal("%s failed: %s", method, error->message);
    }
    return reply;
}

} // namespace vantrel::test
