#include "platform/jobs/RunQueue.h"

#include "platform/jobs/Job.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <chrono>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// A quarter of a frame at 60 Hz: long enough to drain ordinary bursts, short enough to keep
/// frames.
constexpr auto sliceLength = 4ms;

} // namespace

bool isSliceOver()
{
    return RunQueue::interfaceThread().isSliceOver();
}

RunQueue &RunQueue::interfaceThread()
{
    static auto *const queue = new RunQueue;
    return *queue;
}

bool isInterfaceThread()
{
    return RunQueue::interfaceThread().thread() == QThread::currentThread();
}

void RunQueue::pushBack(Waiter &waiter)
{
    m_ready.pushBack(waiter);
    schedule();
}

void RunQueue::pushFront(Waiter &waiter)
{
    m_ready.pushFront(waiter);
    schedule();
}

void RunQueue::postFromThread(std::function<void()> call)
{
    {
        const std::lock_guard lock(m_mutex);
        m_incoming.push_back(std::move(call));
    }
    m_arrived.notify_one();
    schedule();
}

void RunQueue::runUntilIdle()
{
    while (runOne()) {
    }
}

void RunQueue::runUntil(const std::function<bool()> &isDone)
{
    for (runUntilIdle(); !isDone(); runUntilIdle()) {
        std::unique_lock lock(m_mutex);
        m_arrived.wait(lock, [this] { return !m_incoming.empty(); });
    }
}

bool RunQueue::isSliceOver() const
{
    return m_sliceEnd != TimePoint::max() && std::chrono::steady_clock::now() > m_sliceEnd;
}

bool RunQueue::event(QEvent *event)
{
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    m_isScheduled = false;
    // A job may open an event loop, in which slices begin and end within this one.
    const TimePoint outerEnd =
        std::exchange(m_sliceEnd, std::chrono::steady_clock::now() + sliceLength);
    while (runOne()) {
        if (isSliceOver()) {
            schedule();
            break;
        }
    }
    m_sliceEnd = outerEnd;
    return true;
}

void RunQueue::schedule()
{
    if (!m_isScheduled.exchange(true)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
}

bool RunQueue::runOne()
{
    if (m_calls.empty() && !m_isTurnOfReady) {
        const std::lock_guard lock(m_mutex);
        m_calls.swap(m_incoming);
    }
    if (!m_calls.empty()) {
        const auto call = std::move(m_calls.front());
        m_calls.pop_front();
        m_isTurnOfReady = m_calls.empty();
        call();
        return true;
    }
    m_isTurnOfReady = false;
    if (RingLink *const next = m_ready.front()) {
        static_cast<Waiter *>(next)->resume();
        return true;
    }
    const std::lock_guard lock(m_mutex);
    return !m_incoming.empty();
}

void Waiter::wake() noexcept
{
    RunQueue::interfaceThread().pushBack(*this);
}

void Waiter::childEnded() noexcept
{
    RunQueue::interfaceThread().pushFront(*this);
}

void Waiter::resume()
{
    unlink();
    if (m_job->isRunning()) {
        m_job->defer(*this);
    } else {
        m_job->run(m_frame);
    }
}

} // namespace vantrel
