#include "platform/jobs/SerialWorker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace vantrel {

/// Shared with the thread, so that a thread that is left behind keeps what it uses.
struct SerialWorker::State
{
    std::mutex mutex{};
    std::condition_variable wake{};
    std::deque<std::function<void()>> queue{}; ///< Guarded by `mutex`.
    bool isStopped = false;                    ///< Guarded by `mutex`.
    std::thread thread{};                      ///< Interface thread only.

    void loop()
    {
        for (;;) {
            std::function<void()> call;
            {
                std::unique_lock lock(mutex);
                wake.wait(lock, [this] { return isStopped || !queue.empty(); });
                if (isStopped) {
                    return;
                }
                call = std::move(queue.front());
                queue.pop_front();
            }
            call();
        }
    }
};

SerialWorker::SerialWorker(AtEnd atEnd)
    : m_state(std::make_shared<State>())
    , m_atEnd(atEnd)
{
    m_state->thread = std::thread([state = m_state] { state->loop(); });
}

SerialWorker::~SerialWorker()
{
    std::deque<std::function<void()>> unstarted;
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isStopped = true;
        unstarted.swap(m_state->queue);
    }
    m_state->wake.notify_all();
    if (m_atEnd == AtEnd::join) {
        m_state->thread.join();
    } else {
        m_state->thread.detach();
    }
}

void SerialWorker::enqueue(std::function<void()> call)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->queue.push_back(std::move(call));
    }
    m_state->wake.notify_one();
}

} // namespace vantrel
