#include "platform_keychain/BusLog.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace vantrel::test {

namespace {

constexpr auto markInterface = "com.orbisk.test";

struct Message
{
    GDBusMessageType type = G_DBUS_MESSAGE_TYPE_INVALID;
    QByteArray destination{};
    QByteArray interface{};
    QByteArray member{};
    QByteArray bytes{};
};

Message copyOf(GDBusMessage *message)
{
    gsize size = 0;
    guchar *const blob =
        g_dbus_message_to_blob(message, &size, G_DBUS_CAPABILITY_FLAGS_NONE, nullptr);
    Message copy;
    copy.type = g_dbus_message_get_message_type(message);
    copy.destination = g_dbus_message_get_destination(message);
    copy.interface = g_dbus_message_get_interface(message);
    copy.member = g_dbus_message_get_member(message);
    copy.bytes = QByteArray(reinterpret_cast<const char *>(blob), qsizetype(size));
    g_free(blob);
    return copy;
}

} // namespace

struct BusLog::Record
{
    std::mutex mutex{};
    std::condition_variable grown{};
    std::vector<Message> messages{}; ///< Guarded by `mutex`.

    template<typename IsMeant>
    std::size_t count(const IsMeant &isMeant) const
    {
        return std::size_t(std::count_if(messages.cbegin(), messages.cend(), isMeant));
    }

    template<typename IsMeant>
    void waitForCount(std::size_t number, const IsMeant &isMeant)
    {
        std::unique_lock lock(mutex);
        grown.wait(lock, [&] { return count(isMeant) >= number; });
    }
};

BusLog::BusLog()
    : m_record(std::make_shared<Record>())
{
    const auto release = [](gpointer record) {
        delete static_cast<std::shared_ptr<Record> *>(record);
    };
    m_filter = g_dbus_connection_add_filter(m_bus.get(), arrived,
                                            new std::shared_ptr<Record>(m_record), release);
    const gchar *const everything[] = {nullptr};
    call(m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
         "org.freedesktop.DBus.Monitoring", "BecomeMonitor",
         g_variant_new("(^asu)", everything, 0U));
}

BusLog::~BusLog()
{
    g_dbus_connection_remove_filter(m_bus.get(), m_filter);
    g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
}

void BusLog::waitForCallToDaemon(const QByteArray &uniqueName)
{
    m_record->waitForCount(1, [&](const Message &message) {
        return message.type == G_DBUS_MESSAGE_TYPE_METHOD_CALL &&
               (message.destination == uniqueName ||
                message.destination == "org.freedesktop.secrets");
    });
}

qsizetype BusLog::callCount(const QByteArray &method)
{
    catchUp();
    const std::lock_guard lock(m_record->mutex);
    return qsizetype(m_record->count([&](const Message &message) {
        return message.type == G_DBUS_MESSAGE_TYPE_METHOD_CALL && message.member == method;
    }));
}

QByteArray BusLog::bytes()
{
    catchUp();
    const std::lock_guard lock(m_record->mutex);
    QByteArray all;
    for (const Message &message : m_record->messages) {
        all += message.bytes;
    }
    return all;
}

void BusLog::catchUp()
{
    // The bus hands its messages to a monitor in the order in which it got them.
    g_dbus_connection_emit_signal(m_marks.get(), nullptr, "/", markInterface, "Mark", nullptr,
                                  nullptr);
    ++m_markCount;
    m_record->waitForCount(
        m_markCount, [](const Message &message) { return message.interface == markInterface; });
}

GDBusMessage *BusLog::arrived(GDBusConnection *connection, GDBusMessage *message,
                              gboolean isIncoming, gpointer record)
{
    // The replies to this connection's own calls; everything else was never meant for it, and a
    // monitor that answers is thrown off the bus.
    const QByteArrayView destination = g_dbus_message_get_destination(message);
    const QByteArrayView own = g_dbus_connection_get_unique_name(connection);
    if (isIncoming == 0 || destination == own) {
        return message;
    }
    Record &target = **static_cast<std::shared_ptr<Record> *>(record);
    {
        const std::lock_guard lock(target.mutex);
        target.messages.push_back(copyOf(message));
    }
    target.grown.notify_all();
    g_object_unref(message);
    return nullptr;
}

} // namespace vantrel::test
