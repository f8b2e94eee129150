#include "platform/jobs/Job.h"

#include "platform/jobs/RunQueue.h"

#include <QDebug>

#include <exception>
#include <utility>

namespace vantrel {

namespace {

void logUnhandled(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &exception) {
        qCritical("a job stopped at an unexpected error: %s", exception.what());
    } catch (...) {
        qCritical("a job stopped at an unexpected error");
    }
}

Task<> waitForEnd(std::shared_ptr<JobState> state)
{
    if (state && state->isActive()) {
        co_await state->finished().wait();
    }
}

} // namespace

bool isCancelRequested(const JobState *job)
{
    return job->isCancelled();
}

JobState::JobState(Task<> body)
    : m_root(std::move(body).releaseFrame())
{
    m_root.promise().job = this;
    m_start.arm(m_root.handle());
}

void JobState::start(std::function<void()> ended)
{
    m_ended = std::move(ended);
    m_start.wake();
}

void JobState::cancel()
{
    m_isCancelled = true;
    if (m_isActive && !m_isRunning) {
        end();
    }
}

void JobState::run(std::coroutine_handle<> frame)
{
    const auto keepAlive = shared_from_this();
    m_isRunning = true;
    frame.resume();
    m_isRunning = false;
    if (m_root.isDone() || m_isCancelled) {
        end();
        return;
    }
    while (RingLink *const next = m_deferred.front()) {
        RunQueue::interfaceThread().pushBack(static_cast<Waiter &>(*next));
    }
}

void JobState::end()
{
    m_isActive = false;
    m_start.unlink();
    {
        // Destroys every suspended frame, the outermost first, while the members are still whole.
        const auto frames = std::exchange(m_root, {});
        if (frames.isDone() && frames.promise().error) {
            logUnhandled(frames.promise().error);
        }
    }
    m_finished.wakeAll();
    const auto ended = std::exchange(m_ended, {});
    if (ended && !m_isCancelled) {
        ended();
    }
}

Job::Job(Task<> body, std::function<void()> ended)
    : m_state(std::make_shared<JobState>(std::move(body)))
{
    VANTREL_ASSERT_UI_THREAD();
    m_state->start(std::move(ended));
}

Job &Job::operator=(Job &&other) noexcept
{
    // What dies with the old job may hold the new one, or replace this one in its turn.
    Job taken(std::move(other));
    std::swap(m_state, taken.m_state);
    return *this;
}

void Job::cancel()
{
    if (const auto state = std::exchange(m_state, {})) {
        state->cancel();
    }
}

Task<> Job::finished() const
{
    return waitForEnd(m_state);
}

} // namespace vantrel
