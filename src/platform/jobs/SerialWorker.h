#pragma once

#include "platform/jobs/RunQueue.h"
#include "platform/jobs/Task.h"
#include "platform/jobs/WaiterList.h"

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace vantrel {

/// What a call on a worker may ask about its caller.
class WorkControl
{
public:
    explicit WorkControl(std::shared_ptr<const std::atomic<bool>> isAbandoned)
        : m_isAbandoned(std::move(isAbandoned))
    {}

    /// True once nobody waits for the result any more. Thread: any.
    [[nodiscard]] bool isAbandoned() const
    {
        return m_isAbandoned->load(std::memory_order_relaxed);
    }

private:
    std::shared_ptr<const std::atomic<bool>> m_isAbandoned;
};

/// A thread that runs blocking calls one at a time, in order: `co_await worker.run(call)` runs
/// `call(control)` there and goes on here, on the interface thread, with what it returned.
///
/// A call whose waiter has gone is skipped when it has not begun, and can see from its control that
/// it was abandoned when it has.
class SerialWorker
{
public:
    /// What the destructor does with a call that is still running.
    enum class AtEnd {
        join,  ///< Wait for it: for calls that end soon.
        leave, ///< Let the thread run on by itself: for calls that nothing can interrupt.
    };

    explicit SerialWorker(AtEnd atEnd = AtEnd::join);
    SerialWorker(const SerialWorker &) = delete;
    SerialWorker &operator=(const SerialWorker &) = delete;
    ~SerialWorker();

    template<typename Call>
    Task<std::invoke_result_t<Call, const WorkControl &>> run(Call call)
    {
        using Value = std::invoke_result_t<Call, const WorkControl &>;
        const auto operation = std::make_shared<Operation<Value>>();
        const Lease lease(operation->isAbandoned);
        enqueue([operation, call = std::move(call)]() mutable {
            if (!operation->isAbandoned->load(std::memory_order_relaxed)) {
                const WorkControl control(operation->isAbandoned);
                try {
                    operation->value.emplace(call(control));
                } catch (...) {
                    operation->error = std::current_exception();
                }
            }
            // What the call captured dies on its own thread, before anybody is told.
            {
                [[maybe_unused]] const Call done = std::move(call);
            }
            RunQueue::interfaceThread().postFromThread([operation = std::move(operation)] {
                operation->isEnded = true;
                operation->ended.wakeAll();
            });
        });
        while (!operation->isEnded) {
            co_await operation->ended.wait();
        }
        if (operation->error) {
            std::rethrow_exception(operation->error);
        }
        co_return std::move(*operation->value);
    }

private:
    struct State;

    template<typename Value>
    struct Operation
    {
        std::shared_ptr<std::atomic<bool>> isAbandoned = std::make_shared<std::atomic<bool>>(false);
        std::optional<Value> value{}; ///< Written by the worker before it posts the end.
        std::exception_ptr error{};   ///< As `value`.
        bool isEnded = false;         ///< Interface thread only.
        WaiterList ended{};           ///< Interface thread only.
    };

    /// Abandons the operation when its waiter goes.
    class Lease
    {
    public:
        explicit Lease(std::shared_ptr<std::atomic<bool>> isAbandoned)
            : m_isAbandoned(std::move(isAbandoned))
        {}
        Lease(const Lease &) = delete;
        Lease &operator=(const Lease &) = delete;
        ~Lease() { m_isAbandoned->store(true, std::memory_order_relaxed); }

    private:
        std::shared_ptr<std::atomic<bool>> m_isAbandoned;
    };

    void enqueue(std::function<void()> call);

    std::shared_ptr<State> m_state;
    AtEnd m_atEnd;
};

} // namespace vantrel
