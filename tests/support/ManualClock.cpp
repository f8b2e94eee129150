#include "support/ManualClock.h"

namespace vantrel::test {

namespace {

template<typename List, typename Item>
class Membership
{
public:
    Membership(List &list, Item item)
        : m_list(list)
        , m_item(item)
    {
        m_list.push_back(item);
    }
    Membership(const Membership &) = delete;
    Membership &operator=(const Membership &) = delete;
    ~Membership() { m_list.remove(m_item); }

private:
    List &m_list;
    Item m_item;
};

} // namespace

Task<> ManualClock::sleep(std::chrono::milliseconds duration)
{
    Sleeper sleeper;
    sleeper.end = m_now + duration;
    const Membership membership(m_sleepers, &sleeper);
    while (m_now < sleeper.end) {
        co_await sleeper.elapsed.wait();
    }
}

void ManualClock::advance(std::chrono::milliseconds duration)
{
    m_now += duration;
    auto byEnd = m_sleepers;
    byEnd.sort([](const Sleeper *a, const Sleeper *b) { return a->end < b->end; });
    for (Sleeper *const sleeper : byEnd) {
        if (sleeper->end <= m_now) {
            sleeper->elapsed.wakeAll();
        }
    }
}

} // namespace vantrel::test
