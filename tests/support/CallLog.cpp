#include "support/CallLog.h"

#include <algorithm>

namespace vantrel::test {

void CallLog::append(const QString &entry)
{
    {
        const std::lock_guard lock(m_mutex);
        m_entries.push_back(entry);
    }
    m_appended.notify_all();
}

QStringList CallLog::entries() const
{
    const std::lock_guard lock(m_mutex);
    return QStringList(m_entries.cbegin(), m_entries.cend());
}

void CallLog::waitFor(const QString &entry) const
{
    std::unique_lock lock(m_mutex);
    m_appended.wait(lock, [&] {
        return std::find(m_entries.cbegin(), m_entries.cend(), entry) != m_entries.cend();
    });
}

} // namespace vantrel::test
