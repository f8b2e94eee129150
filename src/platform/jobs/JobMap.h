#pragma once

#include "platform/jobs/Job.h"

#include <map>
#include <utility>

namespace vantrel {

/// At most one running job per key; a job that has ended leaves the map by itself.
/// Thread: interface.
template<typename Key>
class JobMap
{
public:
    JobMap() = default;
    JobMap(const JobMap &) = delete;
    JobMap &operator=(const JobMap &) = delete;

    [[nodiscard]] bool contains(const Key &key) const { return m_jobs.contains(key); }
    [[nodiscard]] bool isEmpty() const { return m_jobs.empty(); }

    /// Starts a job under the key; one that runs there already is cancelled.
    void start(const Key &key, Task<> body)
    {
        m_jobs.insert_or_assign(key, Job(std::move(body), [this, key] { m_jobs.erase(key); }));
    }

    /// Ends when the key's job has ended; at once when there is none.
    Task<> finished(const Key &key) const
    {
        const auto found = m_jobs.find(key);
        return found == m_jobs.end() ? Job().finished() : found->second.finished();
    }

    void cancel(const Key &key) { m_jobs.extract(key); }
    void cancelAll() { const auto all = std::exchange(m_jobs, {}); }

private:
    std::map<Key, Job> m_jobs;
};

} // namespace vantrel
