#pragma once

#include "platform/jobs/Clock.h"
#include "platform/jobs/WaiterList.h"

#include <list>

namespace vantrel::test {

/// A clock that a test drives by hand.
class ManualClock final : public Clock
{
public:
    Task<> sleep(std::chrono::milliseconds duration) override;

    /// Moves the time on and wakes whoever's time has come; then the test runs the queue.
    void advance(std::chrono::milliseconds duration);

    [[nodiscard]] std::size_t sleeperCount() const { return m_sleepers.size(); }

private:
    struct Sleeper
    {
        std::chrono::milliseconds end{};
        WaiterList elapsed{};
    };

    std::chrono::milliseconds m_now{};
    std::list<Sleeper *> m_sleepers{};
};

} // namespace vantrel::test
