#pragma once

#include "platform/jobs/Waiter.h"

namespace vantrel {

/// Coroutines that wait for one event, released in order of arrival: `co_await list.wait()`.
/// A waiter whose job is cancelled leaves the list by itself. Thread: interface.
class WaiterList
{
public:
    class Awaiter
    {
    public:
        explicit Awaiter(WaiterList &list)
            : m_list(list)
        {}

        [[nodiscard]] bool await_ready() const noexcept { return false; }

        template<typename Promise>
        void await_suspend(std::coroutine_handle<Promise> frame)
        {
            m_waiter.arm(frame);
            m_list.m_ring.pushBack(m_waiter);
        }

        void await_resume() const noexcept {}

    private:
        WaiterList &m_list;
        Waiter m_waiter;
    };

    [[nodiscard]] Awaiter wait() { return Awaiter(*this); }

    /// Wakes the first waiter; false when there is none.
    bool wakeOne()
    {
        RingLink *const first = m_ring.front();
        if (first != nullptr) {
            static_cast<Waiter *>(first)->wake();
        }
        return first != nullptr;
    }

    void wakeAll()
    {
        while (wakeOne()) {
        }
    }

    [[nodiscard]] bool isEmpty() const { return !m_ring.isLinked(); }

private:
    RingLink m_ring;
};

} // namespace vantrel
