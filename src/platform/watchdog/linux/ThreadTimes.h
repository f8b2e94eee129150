#pragma once

#include <chrono>

#include <sys/types.h>

namespace vantrel {

/// What has passed for one thread since its start.
struct ThreadTimes
{
    std::chrono::nanoseconds wall{0};      ///< By the steady clock.
    std::chrono::nanoseconds processor{0}; ///< In which it ran.
    std::chrono::nanoseconds queued{0}; ///< In which it could have run, but no processor was free.
};

/// Those of a thread of this process, by its number in the system. Zeroes where the system does not
/// tell. Thread: any.
[[nodiscard]] ThreadTimes timesOfThread(pid_t thread);

} // namespace vantrel
