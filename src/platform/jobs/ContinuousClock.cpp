#include "platform/jobs/ContinuousClock.h"

#include <algorithm>
#include <utility>

namespace vantrel {

ContinuousClock::ContinuousClock(Clock &timers, Now now)
    : m_timers(timers)
    , m_now(std::move(now))
{}

Task<> ContinuousClock::sleep(std::chrono::milliseconds duration)
{
    const std::chrono::milliseconds end = m_now() + duration;
    for (auto left = duration; left.count() > 0; left = end - m_now()) {
        co_await m_timers.sleep(std::min(left, lookInterval));
    }
}

} // namespace vantrel
