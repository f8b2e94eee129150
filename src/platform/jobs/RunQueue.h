#pragma once

#include "platform/jobs/Waiter.h"

#include <QObject>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace vantrel {

/// The interface thread's queue of coroutines that can go on, and of calls that arrive from other
/// threads.
///
/// A burst of ready work is run for at most 4 ms at a time; then Qt paints and reads input before
/// the rest. Everything but `postFromThread` belongs to the interface thread.
class RunQueue final : public QObject
{
public:
    /// The queue of the thread that calls this first, which must be the interface thread. It lives
    /// until the process ends, since a worker that was left behind may still post to it.
    static RunQueue &interfaceThread();

    void pushBack(Waiter &waiter);
    void pushFront(Waiter &waiter);

    /// Runs `call` on the interface thread. Thread: any.
    void postFromThread(std::function<void()> call);

    /// Runs everything that is ready, without an event loop. For tests.
    void runUntilIdle();

    /// Runs what is ready and waits for other threads until `isDone`. For tests: where no thread
    /// ever posts again it waits until the test's own time limit.
    void runUntil(const std::function<bool()> &isDone);

    /// Always false outside the event loop.
    [[nodiscard]] bool isSliceOver() const;

    bool event(QEvent *event) override;

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    RunQueue() = default;

    void schedule();
    bool runOne();

    RingLink m_ready;
    std::atomic<bool> m_isScheduled = false;   ///< An event is on its way that runs what is ready.
    std::deque<std::function<void()>> m_calls; ///< What has come from threads and runs next.
    bool m_isTurnOfReady = false;              ///< After those, before what came meanwhile.
    TimePoint m_sliceEnd = TimePoint::max();

    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<std::function<void()>> m_incoming; ///< Guarded by `m_mutex`.
};

/// True on the thread that owns all state that screens show.
[[nodiscard]] bool isInterfaceThread();

} // namespace vantrel

/// First statement of every public operation that belongs to the interface thread.
#define VANTREL_ASSERT_UI_THREAD() Q_ASSERT(::vantrel::isInterfaceThread())
