#include "platform/watchdog/linux/ThreadTimes.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace vantrel {

ThreadTimes timesOfThread(pid_t thread)
{
    ThreadTimes times;
    times.wall = std::chrono::steady_clock::now().time_since_epoch();
    // Without a buffer of the library, since a thread that is watched may hold the heap.
    std::array<char, 64> path{};
    std::snprintf(path.data(), path.size(), "/proc/self/task/%d/schedstat", int(thread));
    const int file = ::open(path.data(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return times;
    }
    std::array<char, 96> text{};
    const ssize_t size = ::read(file, text.data(), text.size() - 1);
    ::close(file);
    long long processor = 0;
    long long queued = 0;
    if (size > 0 && std::sscanf(text.data(), "%lld %lld", &processor, &queued) == 2) {
        times.processor = std::chrono::nanoseconds(processor);
        times.queued = std::chrono::nanoseconds(queued);
    }
    return times;
}

} // namespace vantrel
