#pragma once

#include "platform/jobs/Task.h"

#include <utility>
#include <variant>

namespace vantrel {

/// Runs two tasks side by side; the first to end wins and the other is destroyed. Made by
/// `firstOf`.
template<typename A, typename B>
class [[nodiscard]] FirstOf
{
public:
    FirstOf(Task<A> a, Task<B> b)
        : m_a(std::move(a))
        , m_b(std::move(b))
    {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    template<typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> frame)
    {
        m_waiterA.arm(frame);
        m_waiterB.arm(frame);
        JobState *const job = frame.promise().job;
        if (isCancelRequested(job)) {
            return true;
        }
        if (m_a.begin(job, m_waiterA) || isCancelRequested(job)) {
            return isCancelRequested(job);
        }
        return !m_b.begin(job, m_waiterB) || isCancelRequested(job);
    }

    std::variant<A, B> await_resume()
    {
        using Winner = std::variant<A, B>;
        if (m_a.isDone()) {
            const Task<B> loser = std::move(m_b);
            return Winner(std::in_place_index<0>, m_a.take());
        }
        const Task<A> loser = std::move(m_a);
        return Winner(std::in_place_index<1>, m_b.take());
    }

private:
    Task<A> m_a;
    Task<B> m_b;
    Waiter m_waiterA;
    Waiter m_waiterB;
};

template<typename A, typename B>
FirstOf<A, B> firstOf(Task<A> a, Task<B> b)
{
    return FirstOf<A, B>(std::move(a), std::move(b));
}

} // namespace vantrel
