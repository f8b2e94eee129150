#include "platform_keychain/Keyring.h"

#include "support/ProcessRun.h"

#include <QStringList>

#include <csignal>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto busName = "org.freedesktop.DBus";
constexpr auto busPath = "/org/freedesktop/DBus";
constexpr auto daemonName = "org.freedesktop.secrets";
constexpr auto daemonPath = "/org/freedesktop/secrets";
constexpr auto serviceInterface = "org.freedesktop.Secret.Service";
constexpr auto collectionPath = "/org/freedesktop/secrets/collection/login";

void runDaemon(const QStringList &arguments, const QByteArray &password)
{
    const ProcessRun daemon = run(u"gnome-keyring-daemon"_s, arguments, password);
    if (daemon.exitCode != 0) {
        qFatal("the keyring's daemon does not start: %s", daemon.errors.constData());
    }
}

struct NameWatch
{
    bool isWantedThere = true;
    bool isReached = false;
};

void nameAppeared(GDBusConnection *, const gchar *, const gchar *, gpointer watch)
{
    auto *const name = static_cast<NameWatch *>(watch);
    name->isReached = name->isReached || name->isWantedThere;
}

void nameVanished(GDBusConnection *, const gchar *, gpointer watch)
{
    auto *const name = static_cast<NameWatch *>(watch);
    name->isReached = name->isReached || !name->isWantedThere;
}

} // namespace

Keyring::Keyring()
    : m_bus(connectToSessionBus())
{}

bool Keyring::isRunning()
{
    const Variant reply = call(m_bus.get(), busName, busPath, busName, "NameHasOwner",
                               g_variant_new("(s)", daemonName));
    gboolean hasOwner = FALSE;
    g_variant_get(reply.get(), "(b)", &hasOwner);
    return hasOwner != 0;
}

QByteArray Keyring::uniqueName()
{
    const Variant reply = call(m_bus.get(), busName, busPath, busName, "GetNameOwner",
                               g_variant_new("(s)", daemonName));
    const gchar *name = nullptr;
    g_variant_get(reply.get(), "(&s)", &name);
    return name;
}

void Keyring::start()
{
    runDaemon({u"--unlock"_s, u"--components=secrets"_s}, "test");
    waitForDaemon(true);
}

void Keyring::startLocked()
{
    runDaemon({u"--daemonize"_s, u"--components=secrets"_s}, QByteArray());
    waitForDaemon(true);
}

void Keyring::kill()
{
    ::kill(processOf(daemonName), SIGKILL);
    waitForDaemon(false);
}

void Keyring::freeze()
{
    ::kill(processOf(daemonName), SIGSTOP);
}

void Keyring::thaw()
{
    ::kill(processOf(daemonName), SIGCONT);
}

void Keyring::lock()
{
    const gchar *const collections[] = {collectionPath};
    call(m_bus.get(), daemonName, daemonPath, serviceInterface, "Lock",
         g_variant_new("(@ao)", g_variant_new_objv(collections, 1)));
}

void Keyring::unlock()
{
    // Over the daemon's own door for tests: without a display it cannot ask for the password.
    const Variant session =
        call(m_bus.get(), daemonName, daemonPath, serviceInterface, "OpenSession",
             g_variant_new("(sv)", "plain", g_variant_new_string("")));
    const gchar *sessionPath = nullptr;
    g_variant_get(session.get(), "(v&o)", nullptr, &sessionPath);
    GVariant *const nothing =
        g_variant_new_from_data(G_VARIANT_TYPE_BYTESTRING, "", 0, TRUE, nullptr, nullptr);
    GVariant *const password =
        g_variant_new_from_data(G_VARIANT_TYPE_BYTESTRING, "test", 4, TRUE, nullptr, nullptr);
    call(m_bus.get(), daemonName, daemonPath,
         "org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface", "UnlockWithMasterPassword",
         g_variant_new("(o(o@ay@ays))", collectionPath, sessionPath, nothing, password,
                       "text/plain"));
}

void Keyring::killBus()
{
    ::kill(processOf(busName), SIGKILL);
    while (g_dbus_connection_is_closed(m_bus.get()) == 0) {
        g_main_context_iteration(nullptr, TRUE);
    }
}

int Keyring::processOf(const char *name)
{
    const Variant reply = call(m_bus.get(), busName, busPath, busName, "GetConnectionUnixProcessID",
                               g_variant_new("(s)", name));
    guint32 process = 0;
    g_variant_get(reply.get(), "(u)", &process);
    return int(process);
}

void Keyring::waitForDaemon(bool isThere)
{
    GMainContext *const context = g_main_context_new();
    g_main_context_push_thread_default(context);
    NameWatch watch;
    watch.isWantedThere = isThere;
    const guint id =
        g_bus_watch_name_on_connection(m_bus.get(), daemonName, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                       nameAppeared, nameVanished, &watch, nullptr);
    while (!watch.isReached) {
        g_main_context_iteration(context, TRUE);
    }
    g_bus_unwatch_name(id);
    g_main_context_pop_thread_default(context);
    g_main_context_unref(context);
}

} // namespace vantrel::test
