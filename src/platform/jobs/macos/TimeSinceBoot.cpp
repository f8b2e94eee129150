#include "platform/jobs/TimeSinceBoot.h"

#include <ctime>

namespace vantrel {

std::chrono::milliseconds timeSinceBoot()
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const auto time = std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
    return std::chrono::duration_cast<std::chrono::milliseconds>(time);
}

} // namespace vantrel
