#pragma once

#include "platform/Result.h"
#include "platform/jobs/Frame.h"

#include <optional>
#include <utility>

namespace vantrel {

/// A sequence that is pulled: each `co_await stream.next()` gives the next value, an error, or
/// nothing at the end. After an error the stream is over. Dropping a stream drops its source: a
/// network reply is aborted, a subscription is withdrawn. A stream whose reader leaves while the
/// source is busy is over too, since the source runs within the job of its reader. Thread:
/// interface.
///
/// The coroutine of a stream yields values or errors: `co_yield value;` and, to end with an error,
/// `co_yield failure(error); co_return;` with the yielded value named before.
template<typename Value, typename Error>
class [[nodiscard]] Stream
{
public:
    using Item = Result<Value, Error>;

    struct promise_type : PromiseBase
    {
        std::optional<Item> item{};
        bool isBusy = false; ///< The producer waits for something itself.

        Stream get_return_object() { return Stream(*this); }
        void return_void() const noexcept {}

        TellParent yield_value(Item next)
        {
            item.emplace(std::move(next));
            return {};
        }
    };

    explicit Stream(promise_type &promise)
        : m_frame(promise)
    {}

    class Awaiter
    {
    public:
        explicit Awaiter(Frame<promise_type> &frame)
            : m_frame(frame)
        {}
        Awaiter(const Awaiter &) = delete;
        Awaiter &operator=(const Awaiter &) = delete;
        ~Awaiter()
        {
            if (!m_frame) {
                return;
            }
            auto &promise = m_frame.promise();
            promise.parent = nullptr;
            if (promise.isBusy && !promise.item && !m_frame.isDone()) {
                m_frame = {};
            } else {
                promise.isBusy = false;
            }
        }

        [[nodiscard]] bool await_ready() const noexcept { return false; }

        template<typename Promise>
        bool await_suspend(std::coroutine_handle<Promise> consumer)
        {
            m_waiter.arm(consumer);
            JobState *const job = consumer.promise().job;
            if (isCancelRequested(job)) {
                return true;
            }
            if (!m_frame) {
                return false;
            }
            auto &promise = m_frame.promise();
            if (promise.item || m_frame.isDone()) {
                return letsOthersRun();
            }
            if (!promise.isBusy) {
                promise.job = job;
                promise.isBusy = true;
                m_frame.handle().resume();
            }
            if (promise.item || m_frame.isDone()) {
                promise.isBusy = false;
                return isCancelRequested(job) || letsOthersRun();
            }
            promise.parent = &m_waiter;
            return true;
        }

        std::optional<Item> await_resume()
        {
            if (!m_frame) {
                return std::nullopt;
            }
            auto &promise = m_frame.promise();
            promise.isBusy = false;
            promise.parent = nullptr;
            if (const auto error = std::exchange(promise.error, nullptr)) {
                std::rethrow_exception(error);
            }
            auto item = std::exchange(promise.item, std::nullopt);
            if (item && !*item) {
                m_frame = {}; // An error is the last that a stream gives.
            }
            return item;
        }

    private:
        /// A source that always has something ready does not keep Qt from painting: once the slice
        /// is over its reader goes on in the next one.
        bool letsOthersRun()
        {
            const bool isOver = isSliceOver();
            if (isOver) {
                m_waiter.wake();
            }
            return isOver;
        }

        Frame<promise_type> &m_frame;
        Waiter m_waiter;
    };

    Awaiter next() { return Awaiter(m_frame); }

private:
    Frame<promise_type> m_frame;
};

} // namespace vantrel
