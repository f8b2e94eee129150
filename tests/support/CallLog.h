#pragma once

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace vantrel::test {

/// What several fakes were asked, in the order in which it happened. Thread: any.
class CallLog
{
public:
    void append(const QString &entry);
    [[nodiscard]] QStringList entries() const;

    /// Blocks until another thread has appended `entry`.
    void waitFor(const QString &entry) const;

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_appended;

    /// Guarded by `m_mutex`. No Qt list, since one that a reader shared a moment ago on another
    /// thread is changed in place, which the thread sanitizer takes for a race.
    std::vector<QString> m_entries{};
};

} // namespace vantrel::test
