#pragma once

#include "platform/jobs/Task.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace vantrel {

/// Runs tasks side by side and gives their values in the tasks' order. Made by `allOf`.
template<typename Value>
class [[nodiscard]] AllOf : public Completion
{
public:
    explicit AllOf(std::vector<Task<Value>> tasks)
        : m_tasks(std::move(tasks))
    {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    template<typename Promise>
    bool await_suspend(std::coroutine_handle<Promise> frame)
    {
        m_waiter.arm(frame);
        JobState *const job = frame.promise().job;
        if (isCancelRequested(job)) {
            return true;
        }
        m_left = m_tasks.size();
        for (auto &task : m_tasks) {
            if (task.begin(job, *this)) {
                --m_left;
            }
            if (isCancelRequested(job)) {
                return true;
            }
        }
        return m_left != 0;
    }

    void childEnded() noexcept override
    {
        if (--m_left == 0) {
            m_waiter.childEnded();
        }
    }

    std::vector<Value> await_resume()
    {
        std::vector<Value> values;
        values.reserve(m_tasks.size());
        for (auto &task : m_tasks) {
            values.push_back(task.take());
        }
        return values;
    }

private:
    std::vector<Task<Value>> m_tasks;
    Waiter m_waiter;
    std::size_t m_left = 0;
};

template<typename Value>
AllOf<Value> allOf(std::vector<Task<Value>> tasks)
{
    return AllOf<Value>(std::move(tasks));
}

} // namespace vantrel
