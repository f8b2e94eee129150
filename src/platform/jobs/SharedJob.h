#pragma once

#include "platform/jobs/Job.h"

#include <memory>
#include <optional>
#include <utility>

namespace vantrel {

/// One job with many waiters, each of whom gets a copy of its value. A waiter that leaves does not
/// stop it; it lives while an owner or a waiter does. Thread: interface.
template<typename Value>
class SharedJob
{
public:
    explicit SharedJob(Task<Value> body)
        : m_state(std::make_shared<State>())
    {
        m_state->job = Job(run(m_state.get(), std::move(body)));
    }

    Task<Value> result() const { return wait(m_state); }

    /// The value, once the job has ended.
    [[nodiscard]] const std::optional<Value> &value() const { return m_state->value; }

private:
    struct State
    {
        std::optional<Value> value{};
        std::exception_ptr error{};
        WaiterList done{};
        Job job{};
    };

    static Task<> run(State *state, Task<Value> body)
    {
        try {
            state->value.emplace(co_await std::move(body));
        } catch (...) {
            state->error = std::current_exception();
        }
        state->done.wakeAll();
    }

    static Task<Value> wait(std::shared_ptr<State> state)
    {
        while (!state->value && !state->error) {
            co_await state->done.wait();
        }
        if (state->error) {
            std::rethrow_exception(state->error);
        }
        co_return *state->value;
    }

    std::shared_ptr<State> m_state;
};

} // namespace vantrel
