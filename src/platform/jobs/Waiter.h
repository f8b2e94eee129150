#pragma once

#include "platform/jobs/Ring.h"

#ifndef Q_MOC_RUN // moc cannot read this header of g++ 12
#include <coroutine>
#endif

namespace vantrel {

class JobState;

/// True when `job` was cancelled while one of its frames is running.
[[nodiscard]] bool isCancelRequested(const JobState *job);

/// True when the run queue has worked long enough and Qt is to paint and read input. Asked by what
/// would otherwise go on for as long as something is ready.
[[nodiscard]] bool isSliceOver();

/// Told when a child task or a step of a stream has ended.
class Completion
{
public:
    Completion() = default;
    Completion(const Completion &) = delete;
    Completion &operator=(const Completion &) = delete;

    virtual void childEnded() noexcept = 0;

protected:
    ~Completion() = default;
};

/// One suspended coroutine of one job. Every awaiter of the job layer holds one: destroying it
/// takes the coroutine out of whatever it was waiting in. Thread: interface.
class Waiter : public RingLink, public Completion
{
public:
    /// Remembers the coroutine that is about to suspend.
    template<typename Promise>
    void arm(std::coroutine_handle<Promise> frame)
    {
        m_frame = frame;
        m_job = frame.promise().job;
    }

    /// Lets the coroutine go on after everything that is already ready.
    void wake() noexcept;

    /// Lets the coroutine go on next.
    void childEnded() noexcept override;

    /// Runs the coroutine; the run queue's business.
    void resume();

private:
    std::coroutine_handle<> m_frame;
    JobState *m_job = nullptr;
};

} // namespace vantrel
