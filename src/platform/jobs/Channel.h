#pragma once

#include "platform/jobs/Stream.h"
#include "platform/jobs/WaiterList.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace vantrel {

/// The pushing side of a `Stream`, for sources that speak when they like: notifications, scripted
/// services. What is pushed before it is read waits in an unbounded buffer. Thread: interface.
template<typename Value, typename Error>
class Channel
{
public:
    /// The reading side. One reader per channel.
    Stream<Value, Error> stream() { return read(Reader(m_state)); }

    /// Dropped after the end, and when nobody reads any more.
    void push(Value value)
    {
        if (!m_state->isEnded && !m_state->isTerminated) {
            m_state->buffer.push_back(std::move(value));
            m_state->readers.wakeAll();
        }
    }

    void finish()
    {
        m_state->isEnded = true;
        m_state->readers.wakeAll();
    }

    void fail(Error error)
    {
        if (!m_state->isEnded && !m_state->isTerminated) {
            m_state->buffer.push_back(failure(std::move(error)));
            finish();
        }
    }

    /// True once the reader is gone.
    [[nodiscard]] bool isTerminated() const { return m_state->isTerminated; }

    /// Called once when the reader goes.
    void onTermination(std::function<void()> call) { m_state->onTermination = std::move(call); }

private:
    using Item = Result<Value, Error>;

    struct State
    {
        std::deque<Item> buffer{};
        bool isEnded = false;
        bool isTerminated = false;
        WaiterList readers{};
        std::function<void()> onTermination{};
    };

    class Reader
    {
    public:
        explicit Reader(std::shared_ptr<State> state)
            : m_state(std::move(state))
        {}
        Reader(Reader &&) noexcept = default;
        Reader &operator=(Reader &&) = delete;
        Reader(const Reader &) = delete;
        Reader &operator=(const Reader &) = delete;
        ~Reader()
        {
            if (m_state) {
                m_state->isTerminated = true;
                m_state->buffer.clear();
                if (const auto call = std::exchange(m_state->onTermination, {})) {
                    call();
                }
            }
        }
        [[nodiscard]] State &state() const { return *m_state; }

    private:
        std::shared_ptr<State> m_state;
    };

    static Stream<Value, Error> read(Reader reader)
    {
        State &state = reader.state();
        for (;;) {
            while (state.buffer.empty() && !state.isEnded) {
                co_await state.readers.wait();
            }
            if (state.buffer.empty()) {
                break;
            }
            Item item = std::move(state.buffer.front());
            state.buffer.pop_front();
            co_yield std::move(item);
        }
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace vantrel
