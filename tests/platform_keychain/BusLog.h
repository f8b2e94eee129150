#pragma once

#include "platform_keychain/Glib.h"

#include <QByteArray>

#include <memory>

namespace vantrel::test {

/// Every message on the session's bus from the moment it is made.
class BusLog final
{
public:
    BusLog();
    BusLog(const BusLog &) = delete;
    BusLog &operator=(const BusLog &) = delete;
    ~BusLog();

    /// Blocks until somebody has called a method of the keyring's daemon, which has this unique
    /// name and may have been called by its well-known one.
    void waitForCallToDaemon(const QByteArray &uniqueName);

    /// How often `method` was called, of whomever.
    [[nodiscard]] qsizetype callCount(const QByteArray &method);

    /// All messages as they crossed the bus.
    [[nodiscard]] QByteArray bytes();

private:
    struct Record;

    static GDBusMessage *arrived(GDBusConnection *connection, GDBusMessage *message,
                                 gboolean isIncoming, gpointer record);

    /// Blocks until everything that was sent before this is recorded.
    void catchUp();

    Connection m_marks = connectToSessionBus(); ///< Sends what `catchUp` waits for.
    Connection m_bus = connectToSessionBus();
    std::shared_ptr<Record> m_record; ///< Shared with the connection's thread.
    guint m_filter = 0;
    std::size_t m_markCount = 0;
};

} // namespace vantrel::test
