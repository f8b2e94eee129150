#pragma once

#include "platform/jobs/Clock.h"
#include "platform/jobs/TimeSinceBoot.h"

#include <functional>

namespace vantrel {

/// A clock that goes on while the machine is asleep, for waits on what happens elsewhere meanwhile.
/// A sleep whose time has come during that ends soon after the machine is awake. Thread: interface.
class ContinuousClock final : public Clock
{
public:
    using Now = std::function<std::chrono::milliseconds()>;

    /// How often a sleep looks whether the machine was asleep.
    static constexpr std::chrono::milliseconds lookInterval = std::chrono::seconds(5);

    /// `timers` wakes it and must outlive the clock and every sleep.
    explicit ContinuousClock(Clock &timers, Now now = timeSinceBoot);

    Task<> sleep(std::chrono::milliseconds duration) override;

private:
    Clock &m_timers;
    Now m_now;
};

} // namespace vantrel
