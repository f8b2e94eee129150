#pragma once

#include "platform/watchdog/linux/ThreadTimes.h"

#include <QObject>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

#include <pthread.h>
#include <sys/types.h>

namespace vantrel {

/// Observes from a thread of its own whether the interface thread takes events, and notes what it
/// saw in a file. For debugging: the application makes one only when it is built so and asked for.
///
/// It posts an event, waits until that is taken, and posts the next one 10 ms later. Lines:
///
///     begun                    no event taken for 100 ms; the interface thread's stack follows
///     stretch WALL RUN QUEUED  taken after all: the microseconds that passed, those in which the
///                              thread ran, and those in which it waited for a processor
///     heap BYTES               twice a second: what is allocated and not yet freed
///     crash SIGNAL             the process ends by a signal; its stack follows
///
/// What a stretch has beyond its queued time is the thread's own doing: it computed, or it waited
/// for something. Thread: interface.
class InterfaceWatchdog final : public QObject
{
public:
    /// Observes the calling thread from now on; appends to `file`.
    explicit InterfaceWatchdog(const QString &file);
    InterfaceWatchdog(const InterfaceWatchdog &) = delete;
    InterfaceWatchdog &operator=(const InterfaceWatchdog &) = delete;
    ~InterfaceWatchdog() override;

    bool event(QEvent *event) override;

private:
    void observe();
    void observeOneBeat();
    void write(const QString &line);

    int m_file; ///< A descriptor; -1 when it could not be opened.
    pthread_t m_interfaceThread;
    pid_t m_interfaceThreadId;

    std::mutex m_mutex{};
    std::condition_variable m_changed{};
    // Guarded by the mutex:
    ThreadTimes m_taken{}; ///< When the last event was taken.
    bool m_isTaken = false;
    bool m_isOver = false;

    std::thread m_observer{}; ///< The last member, since it uses all others.
};

} // namespace vantrel
