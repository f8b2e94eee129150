#pragma once

#include <condition_variable>
#include <mutex>

namespace vantrel::test {

/// Something that happens once, on whatever thread.
class Signal
{
public:
    void raise()
    {
        const std::lock_guard lock(m_mutex);
        m_isRaised = true;
        m_raised.notify_all();
    }

    /// Blocks until it is raised; the test's own time limit ends a wait in vain.
    void await()
    {
        std::unique_lock lock(m_mutex);
        m_raised.wait(lock, [this] { return m_isRaised; });
    }

private:
    std::mutex m_mutex{};
    std::condition_variable m_raised{};
    bool m_isRaised = false; ///< Guarded by `m_mutex`.
};

} // namespace vantrel::test
