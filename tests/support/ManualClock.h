#pragma once

#include "platform/jobs/Clock.h"
#include "platform/jobs/WaiterList.h"

#include <chrono>
#include <cstddef>
#include <list>

namespace vantrel::test {

/// A clock that a test drives by hand.
class ManualClock final : public Clock
{
public:
    Task<> sleep(std::chrono::milliseconds duration) override;

    /// Moves the time on in one step and wakes whoever's time has come, the earliest first; then
    /// the test runs the queue. Whoever sleeps again then begins at the new time.
    void advance(std::chrono::milliseconds duration);

    /// How many sleep now: a task sleeps once it was awaited and until it went on or was destroyed.
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
