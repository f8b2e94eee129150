#include "platform/jobs/TimeSinceBoot.h"

#include <ctime>

namespace vantrel {

std::chrono::milliseconds timeSinceBoot()
{
    // The monotonic clock, on which timers run, stands still while the machine is asleep.
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    const auto time = std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
    return std::chrono::duration_cast<std::chrono::milliseconds>(time);
}

} // namespace vantrel
