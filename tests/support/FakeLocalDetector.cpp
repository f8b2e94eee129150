#include "support/FakeLocalDetector.h"

#include <utility>

namespace vantrel::test {

void FakeLocalDetector::finish(const LocalModelServerStatuses &statuses)
{
    m_statuses = statuses;
    m_waiters.wakeAll();
}

Task<LocalModelServerStatuses> FakeLocalDetector::detectAll()
{
    ++m_begunCount;
    while (!m_statuses) {
        co_await m_waiters.wait();
    }
    co_return *std::exchange(m_statuses, std::nullopt);
}

} // namespace vantrel::test
