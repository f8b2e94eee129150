#pragma once

#include "platform/jobs/Waiter.h"

#include <utility>

namespace vantrel {

/// One asynchronous operation at a time, in order of call: `const auto turn = co_await
/// queue.turn();` holds the queue until `turn` goes out of scope. A caller that is cancelled while
/// it waits, or after it was granted its turn and before it ran, is passed over. Thread: interface.
class SerialQueue
{
public:
    class [[nodiscard]] Turn
    {
    public:
        explicit Turn(SerialQueue *queue)
            : m_queue(queue)
        {}
        Turn(Turn &&other) noexcept
            : m_queue(std::exchange(other.m_queue, nullptr))
        {}
        Turn &operator=(Turn &&) = delete;
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;
        ~Turn()
        {
            if (m_queue != nullptr) {
                m_queue->release();
            }
        }

    private:
        SerialQueue *m_queue;
    };

    class Awaiter : public Waiter
    {
    public:
        explicit Awaiter(SerialQueue &queue)
            : m_queue(queue)
        {}
        Awaiter(const Awaiter &) = delete;
        Awaiter &operator=(const Awaiter &) = delete;
        ~Awaiter()
        {
            if (m_isGranted) {
                m_queue.release();
            }
        }

        [[nodiscard]] bool await_ready() const noexcept { return false; }

        template<typename Promise>
        bool await_suspend(std::coroutine_handle<Promise> frame)
        {
            arm(frame);
            if (isCancelRequested(frame.promise().job)) {
                return true;
            }
            if (!m_queue.m_isBusy) {
                m_queue.m_isBusy = true;
                m_isGranted = true;
                return false;
            }
            m_queue.m_waiting.pushBack(*this);
            return true;
        }

        Turn await_resume()
        {
            m_isGranted = false;
            return Turn(&m_queue);
        }

    private:
        friend SerialQueue;

        SerialQueue &m_queue;
        bool m_isGranted = false;
    };

    [[nodiscard]] Awaiter turn() { return Awaiter(*this); }

private:
    void release()
    {
        if (RingLink *const next = m_waiting.front()) {
            auto *const awaiter = static_cast<Awaiter *>(next);
            awaiter->m_isGranted = true;
            awaiter->wake();
        } else {
            m_isBusy = false;
        }
    }

    RingLink m_waiting;
    bool m_isBusy = false;
};

} // namespace vantrel
