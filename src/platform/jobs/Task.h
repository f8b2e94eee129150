#pragma once

#include "platform/jobs/Frame.h"

#include <optional>
#include <utility>

namespace vantrel {

template<typename Value>
class Task;

template<typename Value>
struct TaskPromise : PromiseBase
{
    std::optional<Value> value{};

    Task<Value> get_return_object();

    template<typename From>
    void return_value(From &&from)
    {
        value.emplace(std::forward<From>(from));
    }

    Value take()
    {
        if (error) {
            std::rethrow_exception(error);
        }
        return std::move(*value);
    }
};

template<>
struct TaskPromise<void> : PromiseBase
{
    Task<void> get_return_object();

    void return_void() const noexcept {}

    void take() const
    {
        if (error) {
            std::rethrow_exception(error);
        }
    }
};

/// A lazy coroutine on the interface thread: it runs when it is awaited or made into a `Job`, and
/// belongs to whoever holds it. Destroying a suspended task destroys its frame and every task that
/// it awaits; each awaiter withdraws its request as it goes.
///
/// An expected failure is a `Result` value. An exception passes to the awaiting coroutine.
///
/// Rules that keep coroutines right with g++ 12: name every temporary (an aggregate, a closure) in
/// a statement of its own before the `co_await`; parameters by value; no lambda coroutine that
/// captures.
template<typename Value = void>
class [[nodiscard]] Task
{
public:
    using promise_type = TaskPromise<Value>;
    using ValueType = Value;

    explicit Task(promise_type &promise)
        : m_frame(promise)
    {}

    class Awaiter
    {
    public:
        explicit Awaiter(Frame<promise_type> &frame)
            : m_frame(frame)
        {}

        [[nodiscard]] bool await_ready() const noexcept { return false; }

        template<typename Promise>
        bool await_suspend(std::coroutine_handle<Promise> parent)
        {
            m_waiter.arm(parent);
            m_frame.promise().job = parent.promise().job;
            if (isCancelRequested(m_frame.promise().job)) {
                return true;
            }
            m_frame.handle().resume();
            if (m_frame.isDone()) {
                // It never suspended: going on at once keeps loops flat.
                return isCancelRequested(m_frame.promise().job);
            }
            m_frame.promise().parent = &m_waiter;
            return true;
        }

        Value await_resume() { return m_frame.promise().take(); }

    private:
        Frame<promise_type> &m_frame;
        Waiter m_waiter;
    };

    Awaiter operator co_await() && noexcept { return Awaiter(m_frame); }

    /// Runs up to the first suspension, for the combinators; true when the task has ended by then.
    bool begin(JobState *job, Completion &parent)
    {
        m_frame.promise().job = job;
        m_frame.handle().resume();
        if (m_frame.isDone()) {
            return true;
        }
        m_frame.promise().parent = &parent;
        return false;
    }

    [[nodiscard]] bool isDone() const { return m_frame.isDone(); }
    Value take() { return m_frame.promise().take(); }
    Frame<promise_type> releaseFrame() && { return std::move(m_frame); }

private:
    Frame<promise_type> m_frame;
};

template<typename Value>
Task<Value> TaskPromise<Value>::get_return_object()
{
    return Task<Value>(*this);
}

inline Task<void> TaskPromise<void>::get_return_object()
{
    return Task<void>(*this);
}

} // namespace vantrel
