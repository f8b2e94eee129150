#pragma once

#include "platform/jobs/Waiter.h"

#include <exception>
#include <utility>

namespace vantrel {

/// What the promises of tasks and streams share: the job they run in, and who is told of their end.
struct PromiseBase
{
    JobState *job = nullptr;
    Completion *parent = nullptr;
    std::exception_ptr error{};

    /// Suspends the coroutine and tells its parent.
    struct TellParent
    {
        [[nodiscard]] bool await_ready() const noexcept { return false; }

        template<typename Promise>
        void await_suspend(std::coroutine_handle<Promise> frame) const noexcept
        {
            if (Completion *const waiting = frame.promise().parent) {
                waiting->childEnded();
            }
        }

        void await_resume() const noexcept {}
    };

    [[nodiscard]] std::suspend_always initial_suspend() const noexcept { return {}; }
    [[nodiscard]] TellParent final_suspend() const noexcept { return {}; }
    void unhandled_exception() noexcept { error = std::current_exception(); }
};

/// The owner of a coroutine's frame: destroying it destroys the frame, and with it everything that
/// the coroutine holds.
template<typename Promise>
class Frame
{
public:
    Frame() = default;
    explicit Frame(Promise &promise)
        : m_handle(std::coroutine_handle<Promise>::from_promise(promise))
    {}
    Frame(Frame &&other) noexcept
        : m_handle(std::exchange(other.m_handle, {}))
    {}
    Frame &operator=(Frame &&other) noexcept
    {
        Frame taken(std::move(other));
        std::swap(m_handle, taken.m_handle);
        return *this;
    }
    Frame(const Frame &) = delete;
    Frame &operator=(const Frame &) = delete;
    ~Frame()
    {
        if (m_handle) {
            m_handle.destroy();
        }
    }

    explicit operator bool() const { return bool(m_handle); }
    [[nodiscard]] Promise &promise() const { return m_handle.promise(); }
    [[nodiscard]] std::coroutine_handle<Promise> handle() const { return m_handle; }
    [[nodiscard]] bool isDone() const { return m_handle.done(); }

private:
    std::coroutine_handle<Promise> m_handle{};
};

} // namespace vantrel
