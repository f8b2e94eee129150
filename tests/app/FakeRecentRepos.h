#pragma once

#include "persistence/RecentReposStoring.h"
#include "support/CallLog.h"

#include <condition_variable>
#include <mutex>
#include <vector>

namespace vantrel::test {

/// A list in memory, whose next call can be made to hang as on a slow disk. Thread: any.
class FakeRecentRepos final : public RecentReposStoring
{
public:
    /// What was asked: "load", "record orchard /home/ada/orchard". It lives as long as the fake,
    /// which a call that is left behind keeps.
    mutable CallLog log{};

    /// Lets the next call of this log entry hang until it is let go; a load has read by then, a
    /// record has not written.
    void hangNext(const QString &call);
    void letGo();

    /// Blocks until that call hangs.
    void waitForHang() const;

    [[nodiscard]] QList<RecentRepo> load() const override;
    void record(const QString &name, const QString &path) override;
    [[nodiscard]] bool isRepository(const QString &path) const override; ///< On the real disk.

private:
    void logAndHang(std::unique_lock<std::mutex> &lock, const QString &call) const;

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;

    // Guarded by `m_mutex`.
    mutable QString m_callToHang{};
    mutable bool m_hangs = false;
    std::vector<RecentRepo> m_repos{}; ///< Oldest first. An entry of a path is always the same.
};

} // namespace vantrel::test
