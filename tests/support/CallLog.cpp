#include "support/CallLog.h"

namespace vantrel::test {

void CallLog::append(const QString &entry)
{
    {
        const std::lock_guard lock(m_mutex);
        m_entries.append(entry);
    }
    m_appended.notify_all();
}

QStringList CallLog::entries() const
{
    const std::lock_guard lock(m_mutex);
    return m_entries;
}

void CallLog::waitFor(const QString &entry) const
{
    std::unique_lock lock(m_mutex);
    m_appended.wait(lock, [&] { return m_entries.contains(entry); });
}

} // namespace vantrel::test
