#pragma once

#include "platform/jobs/Task.h"

#include <chrono>

namespace vantrel {

/// Waiting for time to pass, behind an interface so that tests drive it. Thread: interface.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// Ends when `duration` has passed. Destroying the task withdraws the timer.
    virtual Task<> sleep(std::chrono::milliseconds duration) = 0;
};

} // namespace vantrel
