#pragma once

#include "platform/jobs/Job.h"
#include "platform/jobs/Task.h"

#include <memory>
#include <optional>
#include <utility>

namespace vantrel::test {

/// A task that a test runs beside itself. Destroying or cancelling it destroys the task.
template<typename Value>
class Running
{
public:
    explicit Running(Task<Value> task)
        : m_job(run(std::move(task), m_value.get()))
    {}

    [[nodiscard]] bool isOver() const { return m_value->has_value(); }

    /// Its value, once it is over.
    [[nodiscard]] const std::optional<Value> &value() const { return *m_value; }

    void cancel() { m_job.cancel(); }

private:
    static Task<> run(Task<Value> task, std::optional<Value> *value)
    {
        value->emplace(co_await std::move(task));
    }

    std::unique_ptr<std::optional<Value>> m_value = std::make_unique<std::optional<Value>>();
    Job m_job;
};

} // namespace vantrel::test
