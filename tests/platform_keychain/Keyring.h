#pragma once

#include "platform_keychain/Glib.h"

#include <QByteArray>

namespace vantrel::test {

/// The keyring's daemon on the session's bus, in the hands of a test. What it cannot do ends the
/// process with a message. Every operation returns when the daemon is where it should be.
class Keyring final
{
public:
    Keyring();

    [[nodiscard]] bool isRunning();

    /// The daemon's name of the moment on the bus, as ":1.7".
    [[nodiscard]] QByteArray uniqueName();

    /// Starts the daemon, with the keyring unlocked or locked. There must be none.
    void start();
    void startLocked();

    /// Ends the daemon in the middle of whatever it does.
    void kill();

    /// Keeps the daemon from answering, and lets it go on.
    void freeze();
    void thaw();

    void lock();
    void unlock();

    /// Ends the bus itself.
    void killBus();

private:
    [[nodiscard]] int processOf(const char *name);
    void waitForDaemon(bool isThere);

    Connection m_bus{};
};

} // namespace vantrel::test
