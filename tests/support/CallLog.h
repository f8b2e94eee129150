#pragma once

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <mutex>

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
    QStringList m_entries{}; ///< Guarded by `m_mutex`.
};

} // namespace vantrel::test
