#include "platform/log/SystemLog.h"

#include "platform/log/LogSink.h"
#include "platform/log/LogText.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr std::size_t maxWaiting = 1'000;
constexpr auto writingLimit = 2s;

/// The entries between those who log and the thread that writes. Thread: any.
class Backlog
{
public:
    void add(LogEntry entry)
    {
        const std::lock_guard lock(m_mutex);
        if (m_waiting.size() < maxWaiting) {
            m_waiting.push_back({std::move(entry)});
        } else if (m_waiting.back().lost == 0) {
            m_waiting.push_back({lossEntry(1), 1});
        } else {
            const qsizetype lost = m_waiting.back().lost + 1;
            m_waiting.back() = {lossEntry(lost), lost};
        }
        m_changed.notify_all();
    }

    /// Waits for the next one. Whoever takes it has written the one before.
    LogEntry take()
    {
        std::unique_lock lock(m_mutex);
        m_isWriting = false;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_waiting.empty(); });
        m_isWriting = true;
        LogEntry entry = std::move(m_waiting.front().entry);
        m_waiting.pop_front();
        return entry;
    }

    /// Waits, but not for ever, until everything is written.
    void waitUntilWritten()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, writingLimit,
                           [this] { return m_waiting.empty() && !m_isWriting; });
    }

private:
    struct Waiting
    {
        LogEntry entry{};
        qsizetype lost = 0; ///< How many messages the entry stands for that are not written.
    };

    static LogEntry lossEntry(qsizetype count)
    {
        return {QtWarningMsg, QByteArray(logSubsystem) + ".SystemLog",
                u"%1 messages were lost: nobody took them."_s.arg(count)};
    }

    std::mutex m_mutex{};
    std::condition_variable m_changed{};
    std::deque<Waiting> m_waiting{}; ///< Guarded by the mutex, as the next.
    bool m_isWriting = false;
};

/// Never destroyed: messages come until the process has ended.
Backlog &backlog()
{
    static auto *const all = new Backlog;
    return *all;
}

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    backlog().add(LogEntry{type, QByteArray(context.category), logText(message)});
    if (type == QtFatalMsg) {
        backlog().waitUntilWritten(); // Qt aborts as soon as this function returns.
    }
}

void writeEntries(std::unique_ptr<LogSink> sink)
{
    for (;;) {
        sink->write(backlog().take());
    }
}

/// Starts the thread that writes. It takes no signal, above all not that of a broken pipe, which
/// would end the application.
void startWriting()
{
    sigset_t all{};
    sigset_t former{};
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former);
    std::thread(writeEntries, systemLogSink()).detach();
    ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

} // namespace

void logToSystem()
{
    startWriting();
    qInstallMessageHandler(handleMessage);
    // Not at the end of `main`: Qt exits by itself when the display has gone.
    std::atexit([] { backlog().waitUntilWritten(); });
}

} // namespace vantrel
