#pragma once

#include "platform/jobs/Task.h"
#include "platform/jobs/WaiterList.h"

#include <functional>
#include <memory>

namespace vantrel {

/// The running root of a job: what the frames of one job have in common. Thread: interface.
class JobState final : public std::enable_shared_from_this<JobState>
{
public:
    explicit JobState(Task<> body);

    void start(std::function<void()> ended);
    void cancel();

    /// Resumes one frame of this job, and ends the job when its body is over or it was cancelled.
    void run(std::coroutine_handle<> frame);

    /// One of its frames is running. In an event loop inside that frame no other may run, lest it
    /// changes what the first one stands on.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// Keeps a frame that is ready until the running one has suspended.
    void defer(Waiter &waiter) { m_deferred.pushBack(waiter); }

    [[nodiscard]] bool isActive() const { return m_isActive; }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }
    [[nodiscard]] WaiterList &finished() { return m_finished; }

private:
    void end();

    Frame<TaskPromise<void>> m_root;
    Waiter m_start;
    WaiterList m_finished;
    RingLink m_deferred;
    std::function<void()> m_ended;
    bool m_isActive = true;
    bool m_isRunning = false;
    bool m_isCancelled = false;
};

/// A background job on the interface thread. It starts with the next turn of the run queue.
///
/// Cancelling is destroying: `cancel()`, the destructor and an assignment destroy the suspended
/// frames, after which no line of the job runs. A job that cancels itself is destroyed as soon as
/// it suspends. The handle is the only owner, so the object that the job uses holds it in a field.
/// A job that ends in an exception logs it and stops.
class [[nodiscard]] Job
{
public:
    Job() = default;

    /// `ended` is called once when the body is over, and never after a cancel.
    explicit Job(Task<> body, std::function<void()> ended = {});
    Job(Job &&) noexcept = default;
    Job &operator=(Job &&other) noexcept;
    Job(const Job &) = delete;
    Job &operator=(const Job &) = delete;
    ~Job() { cancel(); }

    [[nodiscard]] bool isActive() const { return m_state && m_state->isActive(); }
    void cancel();

    /// Ends when the job has ended or was cancelled. The task may outlive this handle.
    Task<> finished() const;

private:
    std::shared_ptr<JobState> m_state;
};

} // namespace vantrel
