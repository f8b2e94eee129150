#include "platform/watchdog/linux/InterfaceWatchdog.h"

#include "platform/watchdog/linux/ThreadStack.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include <chrono>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto limit = 100ms;
constexpr auto pulse = 10ms;
constexpr int pulsesPerHeapLine = 50;

long long microseconds(std::chrono::nanoseconds time)
{
    return std::chrono::duration_cast<std::chrono::microseconds>(time).count();
}

QString heapLine()
{
    const struct mallinfo2 info = ::mallinfo2();
    return u"heap %1"_s.arg(info.uordblks + info.hblkhd);
}

} // namespace

InterfaceWatchdog::InterfaceWatchdog(const QString &file)
    : m_file(::open(QFile::encodeName(file).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC,
                    0600))
    , m_interfaceThread(::pthread_self())
    , m_interfaceThreadId(::gettid())
{
    if (m_file < 0) {
        qWarning("the watchdog has no file: %s", qPrintable(qt_error_string()));
        return;
    }
    writeStackAtCrash(m_file);
    m_observer = std::thread([this] { observe(); });
}

InterfaceWatchdog::~InterfaceWatchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_changed.notify_all();
    if (m_observer.joinable()) {
        m_observer.join();
        ::close(m_file);
    }
}

bool InterfaceWatchdog::event(QEvent *event)
{
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    // Here, since the observer may wait for a processor before it sees that the event was taken.
    const ThreadTimes taken = timesOfThread(m_interfaceThreadId);
    {
        const std::lock_guard lock(m_mutex);
        m_taken = taken;
        m_isTaken = true;
    }
    m_changed.notify_all();
    return true;
}

void InterfaceWatchdog::observe()
{
    const auto isOver = [this] { return m_isOver; };
    for (int beats = 0;; ++beats) {
        if (beats % pulsesPerHeapLine == 0) {
            write(heapLine());
        }
        observeOneBeat();
        std::unique_lock lock(m_mutex);
        if (m_changed.wait_for(lock, pulse, isOver)) {
            return;
        }
    }
}

void InterfaceWatchdog::observeOneBeat()
{
    const auto isOver = [this] { return m_isTaken || m_isOver; };
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    // Afterwards: otherwise this thread's own wait for a processor would count.
    const ThreadTimes begun = timesOfThread(m_interfaceThreadId);
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, limit, isOver)) {
        lock.unlock();
        write(u"begun"_s);
        writeStackOfThread(m_interfaceThread, m_file);
        lock.lock();
        m_changed.wait(lock, isOver);
    }
    const bool isTaken = std::exchange(m_isTaken, false);
    const ThreadTimes taken = m_taken;
    lock.unlock();
    if (isTaken && taken.wall - begun.wall > limit) {
        write(u"stretch %1 %2 %3"_s.arg(microseconds(taken.wall - begun.wall))
                  .arg(microseconds(taken.processor - begun.processor))
                  .arg(microseconds(taken.queued - begun.queued)));
    }
}

void InterfaceWatchdog::write(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    static_cast<void>(::write(m_file, bytes.constData(), std::size_t(bytes.size())));
}

} // namespace vantrel
